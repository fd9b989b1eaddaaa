// Unpacks script and style of a page from its block of the program, and starts them. This and what it needs is all that
// a page holds as plain script; its policy knows the others by their hashes, too.

import { block } from './blocks.js';

/** @param {string} tag @param {Uint8Array | undefined} text */
function add(tag, text) {
    const made = document.createElement(tag);
    made.textContent = new TextDecoder().decode(text);
    document.head.append(made);
}

async function boot() {
    const began = performance.now();
    const race = block('race');
    const program = await block('program');
    add('style', program.get('style.css'));
    add('script', program.get('script.js'));
    await /** @type {any} */ (window).keelview.start(program, race, began);
}

boot().catch((error) => {
    console.error(error);
    document.body.textContent = `This browser cannot show the race: ${error.message}`;
});
