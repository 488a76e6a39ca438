// ProseMirror with the basic schema, its history and the base keymap.
import 'prosemirror-view/style/prosemirror.css';
import { EditorState, Selection } from 'prosemirror-state';
import { EditorView } from 'prosemirror-view';
import { schema } from 'prosemirror-schema-basic';
import { history, undo, redo } from 'prosemirror-history';
import { keymap } from 'prosemirror-keymap';
import { baseKeymap } from 'prosemirror-commands';
import { initialParagraphs, mirror } from './page.js';

const doc = schema.node('doc', null, initialParagraphs().map(
  (text) => schema.node('paragraph', null, text ? schema.text(text) : null)));

function paragraphs(doc) {
  const out = [];
  doc.forEach((block, offset) => out.push(doc.textBetween(offset, offset + block.nodeSize, '\n', '\n')));
  return out;
}

const view = new EditorView(document.getElementById('editor'), {
  state: EditorState.create({
    doc,
    selection: Selection.atEnd(doc),
    plugins: [
      history(),
      keymap({ 'Mod-z': undo, 'Mod-y': redo, 'Shift-Mod-z': redo }),
      keymap(baseKeymap),
    ],
  }),
  attributes: { spellcheck: 'false' },
  dispatchTransaction(tr) {
    view.updateState(view.state.apply(tr));
    if (tr.docChanged) mirror(paragraphs(view.state.doc));
  },
});
mirror(paragraphs(view.state.doc));
view.focus();
