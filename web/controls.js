// The program's controls as elements of the page. An element bears its control's name as its id; where it stands is
// what the program says, unless the style sheet knows better.

import { Letters } from './letters.js';
import { Memory } from './memory.js';

/** As ControlKind in src/display/web/native_control.h. */
const kinds = [
    'window', 'panel', 'frame', 'surface', 'plate', 'field', 'textarea', 'button', 'check', 'option', 'combo', 'list',
    'scroll',
];
const borders = ['', 'flat', 'sunken'];
const aligns = ['left', 'centre', 'right'];
/** Those of the system, and the blue of captions, which would not be read on dark ground. */
const ownColours = new Map([
    [0x80000005, 'var(--window)'],
    [0x80000008, 'var(--ink)'],
    [0x8000000f, 'var(--face)'],
    [0xff0000, 'var(--blue)'],
]);

/** @param {number} bgr @returns {string} */
function css(bgr) {
    const colour = bgr >>> 0;
    return ownColours.get(colour) ??
        `rgb(${colour & 255} ${(colour >> 8) & 255} ${(colour >> 16) & 255})`;
}

/** @param {string} tag @param {string} className */
export function element(tag, className = '') {
    const made = document.createElement(tag);
    made.className = className;
    return made;
}

/**
 * @typedef {object} Part
 * @property {number} address  the control in the program
 * @property {string} kind
 * @property {HTMLElement} box  what stands in the page
 * @property {any} works  what the keyboard works on: the input, the button
 * @property {HTMLElement} words  what bears the text
 * @property {number} width
 * @property {number} pixels  height of the letters
 * @property {number} share  of their width that the words are narrowed to
 * @property {boolean} bold
 * @property {Part | undefined} parent
 * @property {HTMLCanvasElement} [canvas]
 * @property {CanvasRenderingContext2D} [pen]
 */

export class Controls {
    /** @param {Memory} memory @param {Letters} letters @param {HTMLElement} root */
    constructor(memory, letters, root) {
        this.memory = memory;
        this.letters = letters;
        this.root = root;
        /** @type {Map<number, Part>} */
        this.parts = new Map();
        /** @type {WeakMap<Element, Part>} */
        this.partOf = new WeakMap();
        this.top = 1;
        /** Told of a control that is there no more. @type {(address: number) => void} */
        this.removed = (_address) => {};
    }

    /** @param {string} name */
    named(name) {
        const box = document.getElementById(name);
        return box ? this.partOf.get(box) : undefined;
    }

    /** The control that an event is about. @param {EventTarget | null} target @returns {Part | undefined} */
    at(target) {
        for (let node = /** @type {Element | null} */ (target); node && node !== this.root; node = node.parentElement) {
            const part = this.partOf.get(node);
            if (part) return part;
        }
        return undefined;
    }

    /** @param {string} kind @param {number} look @returns {[HTMLElement, any, HTMLElement]} */
    build(kind, look) {
        if (kind === 'check' || kind === 'option') {
            const box = element('label', kind);
            const input = /** @type {HTMLInputElement} */ (element('input'));
            input.type = kind === 'check' ? 'checkbox' : 'radio';
            const words = element('span');
            box.append(input, words);
            return [box, input, words];
        }
        if (kind === 'scroll') {
            const input = /** @type {HTMLInputElement} */ (element('input', look ? 'scroll down' : 'scroll'));
            input.type = 'range';
            return [input, input, input];
        }
        if (kind === 'field') {
            const input = /** @type {HTMLInputElement} */ (element('input', `field ${aligns[look & 3]}`));
            input.type = 'text';
            return [input, input, input];
        }
        if (kind === 'combo' || kind === 'list') {
            const select = /** @type {HTMLSelectElement} */ (element('select', kind));
            if (kind === 'list') select.size = 4;
            return [select, select, select];
        }
        const tag = kind === 'button' || kind === 'textarea' ? kind : 'div';
        const style = kind === 'plate' ? `${aligns[look & 3]} ${look & 4 ? 'sunken' : ''}` : borders[look] ?? '';
        const box = element(tag, `${kind} ${style}`);
        const words = element('span', 'words');
        if (kind === 'plate' || kind === 'button' || kind === 'frame') box.append(words);
        return [box, box, words];
    }

    /** @param {number} address @param {number} parent @param {number} number @param {number} look @param {string} name */
    make(address, parent, number, look, name) {
        const kind = kinds[number];
        const above = this.parts.get(parent);
        const [box, works, words] = this.build(kind, look);
        box.id = name;
        if (kind === 'option') works.name = `of ${above?.box.id}`;
        /** @type {Part} */
        const part = {
            address, kind, box, works, words, width: 0, parent: above,
            pixels: above?.pixels ?? 12, bold: false, share: 1,
        };
        if (kind === 'surface') {
            part.canvas = /** @type {HTMLCanvasElement} */ (element('canvas'));
            part.pen = /** @type {CanvasRenderingContext2D} */ (part.canvas.getContext('2d', { alpha: false }));
            box.append(part.canvas);
        }
        this.parts.set(address, part);
        this.partOf.set(box, part);
        (above?.box ?? this.root).append(box);
    }

    /** Narrows words that have no room, down to two thirds. @param {Part} part */
    fit(part) {
        const { words, kind } = part;
        if (kind !== 'plate' && kind !== 'button' && kind !== 'check' && kind !== 'option') return;
        const text = words.textContent ?? '';
        const room = part.width - (kind === 'plate' ? 4 : kind === 'button' ? 6 : 17);
        const wide = text.includes('\n') ? 0 : this.letters.width(text, part.pixels, part.bold);
        const share = room > 0 && wide > room ? Math.max(0.66, room / wide) : 1;
        if (share === part.share) return;
        part.share = share;
        words.style.transform = share < 1 ? `scaleX(${share.toFixed(3)})` : '';
    }

    /** @param {Part} part @param {string} text */
    setText(part, text) {
        if (part.kind === 'field' || part.kind === 'textarea') {
            if (part.works.value !== text) part.works.value = text;
            return;
        }
        part.words.textContent = text.replaceAll('\r\n', '\n');
        if (part.kind === 'frame') part.box.classList.toggle('titled', text !== '');
        this.fit(part);
    }

    /** @param {Part} part @param {number} index @param {string} text */
    setItem(part, index, text) {
        const list = /** @type {HTMLSelectElement} */ (part.works);
        if (index < 0) return list.replaceChildren();
        if (index >= list.options.length) list.append(element('option'));
        list.options[index].textContent = text;
    }

    /** @param {Part} part @param {number} pixels @param {boolean} bold */
    setFont(part, pixels, bold) {
        part.box.style.fontSize = `${pixels}px`;
        part.box.style.fontWeight = bold ? 'bold' : '';
        part.pixels = pixels;
        part.bold = bold;
        for (const other of this.parts.values()) {
            if (other !== part && part.box.contains(other.box) && !other.box.style.fontSize) other.pixels = pixels;
        }
        this.fit(part);
    }

    /** @param {Part} part @param {Uint32Array} colours */
    setStripes(part, colours) {
        const images = Array.from(colours).map((colour) => `linear-gradient(${css(colour)}, ${css(colour)})`);
        part.box.style.backgroundImage = images.join(',');
        part.box.style.backgroundSize = '3px 100%';
        part.box.style.backgroundRepeat = 'no-repeat';
        part.box.style.backgroundPosition = images
            .map((_, i) => `right ${2 + 5 * (images.length - 1 - i)}px top`)
            .join(',');
    }

    /** @param {Part} part @param {number} at @param {number} width @param {number} height @param {number} ratio
     * @param {number} left @param {number} top @param {number} partWidth @param {number} partHeight */
    put(part, at, width, height, ratio, left, top, partWidth, partHeight) {
        const canvas = /** @type {HTMLCanvasElement} */ (part.canvas);
        if (canvas.width !== width || canvas.height !== height) {
            canvas.width = width;
            canvas.height = height;
            canvas.style.width = `${width / ratio}px`;
            canvas.style.height = `${height / ratio}px`;
        }
        const bytes = new Uint8ClampedArray(this.memory.program.memory.buffer, at, 4 * width * height);
        part.pen?.putImageData(new ImageData(bytes, width, height), 0, 0, left, top, partWidth, partHeight);
    }

    /** Only once the program has done what it is at, as the browser lays the page out for it.
     * @param {Part | undefined} part @param {number} chooseAll */
    focus(part, chooseAll) {
        part?.works.focus({ preventScroll: true });
        if (chooseAll) part?.works.select();
    }

    /** What the program asks for. @returns {Record<string, Function>} */
    calls() {
        const { memory, parts } = this;
        /** @param {number} address @returns {Part} */
        const of = (address) => /** @type {Part} */ (parts.get(address));
        return {
            PageMake: (address, parent, kind, look, name, size) =>
                this.make(address, parent, kind, look, memory.text(name, size)),
            PageRemove: (address) => {
                of(address).box.remove();
                parts.delete(address);
                this.removed(address);
            },
            PagePlace: (address, left, top, width, height) => {
                const part = of(address);
                Object.assign(part.box.style, {
                    left: `${left}px`, top: `${top}px`, width: `${width}px`, height: `${height}px`,
                });
                part.width = width;
                this.fit(part);
            },
            PageShow: (address, shown) => of(address).box.classList.toggle('gone', !shown),
            PageEnable: (address, enabled) => {
                const { works, box, kind } = of(address);
                box.classList.toggle('grey', !enabled);
                if (kind === 'button') works.setAttribute('aria-disabled', String(!enabled));
                else if ('disabled' in works) works.disabled = !enabled;
            },
            PageRaise: (address) => (of(address).box.style.zIndex = String(++this.top)),
            PageFocus: (address, chooseAll) => queueMicrotask(() => this.focus(parts.get(address), chooseAll)),
            PageTabStop: (address) => (of(address).box.tabIndex = 0),
            PageBack: (address, bgr) => (of(address).box.style.backgroundColor = css(bgr)),
            PageInk: (address, bgr) => (of(address).box.style.color = css(bgr)),
            PageFont: (address, pixels, bold) => this.setFont(of(address), pixels, bold !== 0),
            PageAlign: (address, align) => {
                of(address).box.classList.remove(...aligns);
                of(address).box.classList.add(aligns[align]);
            },
            PageText: (address, text, size) => this.setText(of(address), memory.text(text, size)),
            PageTick: (address, ticked) => (of(address).works.checked = ticked !== 0),
            PageStripes: (address, at, count) =>
                this.setStripes(of(address), new Uint32Array(memory.program.memory.buffer, at, count).slice()),
            PageItem: (address, index, text, size) => this.setItem(of(address), index, memory.text(text, size)),
            PageChoose: (address, index) => (of(address).works.selectedIndex = index),
            PageRange: (address, least, most, step, value) => {
                const { works } = of(address);
                works.min = String(least);
                works.max = String(most);
                if (step > 0) works.step = String(step);
                works.value = String(value);
            },
            PagePut: (address, at, width, height, ratio, left, top, partWidth, partHeight) =>
                this.put(of(address), at, width, height, ratio, left, top, partWidth, partHeight),
        };
    }
}
