// Slate in React, with slate-history.
import { useEffect, useMemo } from 'react';
import { createRoot } from 'react-dom/client';
import { createEditor, Editor, Node, Transforms } from 'slate';
import { Slate, Editable, ReactEditor, withReact } from 'slate-react';
import { withHistory } from 'slate-history';
import { initialParagraphs, mirror } from './page.js';

const initialValue = initialParagraphs().map((text) => ({ type: 'paragraph', children: [{ text }] }));
const paragraphs = (value) => value.map((block) => Node.string(block));

function App() {
  const editor = useMemo(() => withHistory(withReact(createEditor())), []);
  useEffect(() => {
    mirror(paragraphs(editor.children));
    Transforms.select(editor, Editor.end(editor, []));
    ReactEditor.focus(editor);
  }, [editor]);
  return (
    <Slate editor={editor} initialValue={initialValue} onValueChange={(value) => mirror(paragraphs(value))}>
      <Editable
        spellCheck={false}
        renderElement={({ attributes, children }) => <p {...attributes}>{children}</p>}
      />
    </Slate>
  );
}

createRoot(document.getElementById('editor')).render(<App />);
