// Starts the program of a page with the race that the page holds.

import { Controls } from './controls.js';
import { Desk } from './desk.js';
import { Letters } from './letters.js';
import { Memory } from './memory.js';
import { Person } from './person.js';
import { System, say } from './system.js';

const folder = '/race/';
const wasm = 'keelview.wasm';
const documents = 'attachment/';

/** @param {Uint8Array} bytes */
async function decode(bytes) {
    const image = await createImageBitmap(new Blob([/** @type {BlobPart} */ (bytes)], { type: 'image/png' }), {
        colorSpaceConversion: 'none', premultiplyAlpha: 'none',
    });
    const sheet = document.createElement('canvas');
    sheet.width = image.width;
    sheet.height = image.height;
    const pen = /** @type {CanvasRenderingContext2D} */ (sheet.getContext('2d', { willReadFrequently: true }));
    pen.drawImage(image, 0, 0);
    return pen.getImageData(0, 0, image.width, image.height);
}

/** The page's own program: everything that is done in it goes through here. */
class Page {
    constructor() {
        /** When the page's script and the loading of the race began, milliseconds. */
        this.began = 0;
        this.loads = 0;
        const root = /** @type {HTMLElement} */ (document.getElementById('desk'));
        this.memory = new Memory();
        this.letters = new Letters(this.memory);
        this.controls = new Controls(this.memory, this.letters, root);
        this.broken = false;
        /** @param {() => void} action */
        const guard = (action) => this.guard(action);
        this.system = new System(this.memory, guard);
        this.controls.removed = (address) => this.system.frames.delete(address);
        this.person = new Person(this.memory, this.controls, guard);
        this.desk = new Desk(this.controls);
        /** @type {{name: string, bytes: Uint8Array}[]} */
        this.documents = [];
        this.english = true;
    }

    /** A call into the program that fails leaves it half way: it is not called again.
     * @param {() => void} action */
    guard(action) {
        if (this.broken) return;
        try {
            action();
        } catch (error) {
            this.broken = true;
            console.error(error);
            say('Keelview', 'The program has failed, perhaps for want of memory. Please load the page anew.');
        }
    }

    /** @returns {WebAssembly.Imports} */
    imports() {
        const { memory } = this;
        const env = {
            ...this.letters.calls(),
            ...this.controls.calls(),
            ...this.system.calls(),
            PageOfferDocuments: () => this.desk.offer(this.documents),
            PageWindow: (/** @type {number} */ window) => (this.person.window = window),
            PageWindowSize: (/** @type {number} */ height) => this.desk.size()[height ? 'height' : 'width'],
        };
        const system = {
            fd_write: (/** @type {number} */ _file, /** @type {number} */ at, /** @type {number} */ count,
                /** @type {number} */ written) => {
                const parts = new Uint32Array(memory.program.memory.buffer, at, 2 * count);
                let size = 0;
                for (let i = 0; i < count; ++i) {
                    console.error(memory.text(parts[2 * i], parts[2 * i + 1]));
                    size += parts[2 * i + 1];
                }
                new Uint32Array(memory.program.memory.buffer, written, 1)[0] = size;
                return 0;
            },
        };
        const none = () => 52; // no such call
        return /** @type {any} */ ({
            env,
            wasi_snapshot_preview1: new Proxy(system, { get: (calls, name) => Reflect.get(calls, name) ?? none }),
        });
    }

    /** Shows the race.
     * @param {Map<string, Uint8Array>} own the program and what belongs to it
     * @param {Promise<Map<string, Uint8Array>>} race
     * @param {number} began when the page's script did, milliseconds */
    async start(own, race, began) {
        this.began = began;
        const made = WebAssembly.instantiate(/** @type {BufferSource} */ (own.get(wasm)), this.imports());
        const pictures = [...own].filter(([name]) => name.endsWith('.png'));
        await Promise.all(
            pictures.map(async ([name, bytes]) => this.system.pictures.set(name, await decode(bytes))),
        );
        const { program } = Object.assign(this.memory, { program: (await made).instance.exports });
        program._initialize();
        for (const [name, bytes] of await race) {
            if (name.startsWith(documents)) this.documents.push({ name: name.slice(documents.length), bytes });
            else this.memory.give((at, size) => this.addFile(at, size, bytes), folder + name);
        }
        document.getElementById('race')?.remove();
        this.guard(() => this.open());
    }

    /** @param {number} name @param {number} size @param {Uint8Array} bytes */
    addFile(name, size, bytes) {
        const { program } = this.memory;
        const at = program.BeginFile(name, size, bytes.length);
        this.memory.bytes(at, bytes.length).set(bytes);
    }

    open() {
        const { program } = this.memory;
        this.loads = performance.now();
        this.english = program.Start() !== 0;
        this.desk.speak(this.english, false);
        this.desk.place();
        this.follow();
        const { buttons } = this.desk;
        /** @type {[HTMLElement, () => void][]} */
        const clicks = [
            [buttons.language, () => this.speak(!this.english)],
            [buttons.link, () => this.desk.giveLink(`${location.href.split('#')[0]}#${this.link()}`)],
            [buttons.documents, () => this.desk.offer(this.documents)],
            [buttons.gun, () => this.load(!(this.system.gun.muted = !this.system.gun.muted))],
        ];
        for (const [button, action] of clicks) button.addEventListener('click', () => this.guard(action));
        window.addEventListener('resize', () => this.guard(() => this.resize()));
        window.addEventListener('hashchange', () => this.guard(() => this.follow()));
    }

    /** The gun is heard, once at once. @param {boolean} loaded */
    load(loaded) {
        this.desk.speak(this.english, loaded);
        this.system.gun.fire();
    }

    resize() {
        this.memory.program.OnResize(this.person.window);
        this.desk.place();
    }

    /** @param {boolean} english */
    speak(english) {
        this.english = english;
        this.memory.program.Speak(english);
        this.desk.speak(english, !this.system.gun.muted);
        this.desk.place();
    }

    /** To the moment that the address tells. */
    follow() {
        const link = decodeURIComponent(location.hash.slice(1));
        if (link) this.memory.give(this.memory.program.FollowLink, link);
    }

    link() {
        const { program } = this.memory;
        return this.memory.text(program.LinkNow(), program.AnswerSize());
    }

    /** What keelview-report tells of the open race. @param {string} moments seconds from the start, with commas */
    report(moments) {
        const { program } = this.memory;
        return this.memory.text(this.memory.give(program.Report, moments), program.AnswerSize());
    }
}

Object.assign(window, { keelview: new Page() });
