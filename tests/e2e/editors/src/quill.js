// Quill's core (no theme, no toolbar), with its own history and keyboard modules.
import 'quill/dist/quill.core.css';
import Quill from 'quill/core';
import { initialParagraphs, mirror } from './page.js';

const quill = new Quill('#editor', {});
quill.root.setAttribute('spellcheck', 'false');

// Quill's text always ends in one "\n" closing the last line.
const paragraphs = () => quill.getText().replace(/\n$/, '').split('\n');

quill.on('text-change', () => mirror(paragraphs()));
quill.setText(initialParagraphs().join('\n') + '\n', Quill.sources.API);
quill.history.clear();
mirror(paragraphs());
quill.focus();
quill.setSelection(quill.getLength() - 1, 0, Quill.sources.API);
