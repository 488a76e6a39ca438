// TinyMCE in its classic form: the document in an iframe of its own, as CMS and mail composers
// show it. No menu, toolbar or status bar; the skin and the content styles are bundled in.
import tinymce from 'tinymce';
import 'tinymce/models/dom';
import 'tinymce/themes/silver';
import 'tinymce/icons/default';
import 'tinymce/skins/ui/oxide/skin.js';
import 'tinymce/skins/ui/oxide/content.js';
import 'tinymce/skins/content/default/content.js';
import { initialParagraphs, mirror } from './page.js';

const escape = (text) => text.replace(/&/g, '&amp;').replace(/</g, '&lt;');

// TinyMCE's model is the iframe's document: each top-level block is a paragraph.
const paragraphs = (editor) => Array.from(editor.getBody().children, (p) => p.textContent);

tinymce.init({
  target: document.getElementById('editor'),
  license_key: 'gpl',
  skin: 'oxide',
  content_css: 'default',
  content_style: 'body { font: 18px/1.5 sans-serif; margin: 12px 24px; } p { margin: 0 0 0.6em; }',
  menubar: false,
  toolbar: false,
  statusbar: false,
  height: '100vh',
  browser_spellcheck: false,
  setup(editor) {
    editor.on('init', () => {
      editor.setContent(initialParagraphs().map((t) => `<p>${escape(t)}</p>`).join(''));
      editor.undoManager.clear();
      editor.undoManager.add();
      const body = editor.getBody();
      body.setAttribute('spellcheck', 'false');
      new MutationObserver(() => mirror(paragraphs(editor)))
        .observe(body, { subtree: true, childList: true, characterData: true });
      mirror(paragraphs(editor));
      editor.focus();
      editor.selection.select(body, true);
      editor.selection.collapse(false);
    });
  },
});
