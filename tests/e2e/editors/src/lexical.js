// Lexical without React: the rich-text behaviour and its history on a contenteditable.
import {
  createEditor, $getRoot, $createParagraphNode, $createTextNode, HISTORY_MERGE_TAG,
} from 'lexical';
import { registerRichText, HeadingNode, QuoteNode } from '@lexical/rich-text';
import { registerHistory, createEmptyHistoryState } from '@lexical/history';
import { mergeRegister } from '@lexical/utils';
import { initialParagraphs, mirror } from './page.js';

const editor = createEditor({
  namespace: 'glimmo-e2e',
  nodes: [HeadingNode, QuoteNode],
  onError(error) { throw error; },
});
const element = document.getElementById('editor');
element.contentEditable = 'true';
element.spellcheck = false;
editor.setRootElement(element);

mergeRegister(
  registerRichText(editor),
  registerHistory(editor, createEmptyHistoryState(), 300),
  editor.registerUpdateListener(({ editorState }) => {
    editorState.read(() => mirror($getRoot().getChildren().map((block) => block.getTextContent())));
  }),
);

// The starting text is no step for undo to take back.
editor.update(() => {
  const root = $getRoot();
  root.clear();
  for (const text of initialParagraphs()) {
    const paragraph = $createParagraphNode();
    if (text) paragraph.append($createTextNode(text));
    root.append(paragraph);
  }
  root.selectEnd();
}, { tag: HISTORY_MERGE_TAG, discrete: true });
editor.focus();
