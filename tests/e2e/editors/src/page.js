// What every editor page shares: the starting text from the address and the title that
// mirrors the editor's own model, which the tests read through the window's name.

// The paragraphs of ?text= (split at "\n"), or one empty paragraph. A text ending in "\n"
// yields a last empty paragraph, where the caret then starts.
export function initialParagraphs() {
  const text = new URLSearchParams(location.search).get('text');
  return text === null ? [''] : text.split('\n');
}

// The model's paragraphs, as the title shows them.
export function mirror(paragraphs) {
  const title = paragraphs.join(' \u00b6 ');
  if (document.title !== title) document.title = title;
}
