// CKEditor 5, decoupled (the editable alone, no toolbar), with paragraphs and its undo.
import 'ckeditor5/ckeditor5.css';
import { DecoupledEditor, Essentials, Paragraph } from 'ckeditor5';
import { initialParagraphs, mirror } from './page.js';

const paragraphs = (root) => Array.from(root.getChildren(), (block) =>
  Array.from(block.getChildren(), (node) => (node.is('$text') ? node.data : '')).join(''));

DecoupledEditor.create(document.getElementById('editor'), {
  licenseKey: 'GPL',
  plugins: [Essentials, Paragraph],
}).then((editor) => {
  const model = editor.model;
  const root = model.document.getRoot();
  editor.editing.view.change((writer) => writer.setAttribute('spellcheck', 'false', editor.editing.view.document.getRoot()));
  model.document.on('change:data', () => mirror(paragraphs(root)));
  // The starting text is no step for undo to take back.
  model.enqueueChange({ isUndoable: false }, (writer) => {
    writer.remove(writer.createRangeIn(root));
    for (const text of initialParagraphs()) {
      const paragraph = writer.createElement('paragraph');
      writer.insertText(text, paragraph);
      writer.append(paragraph, root);
    }
  });
  mirror(paragraphs(root));
  // Focusing puts the caret at the start, so the end is set after it; in the page's selection
  // too, which CKEditor takes as its own when the window only gets the focus later.
  const view = editor.editing.view;
  view.focus();
  model.change((writer) => writer.setSelection(root.getChild(root.childCount - 1), 'end'));
  const end = view.domConverter.viewRangeToDom(view.document.selection.getFirstRange());
  getSelection().removeAllRanges();
  getSelection().addRange(end);
});
