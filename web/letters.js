// Letters as the browser draws them: how wide a line is, and which pixels it covers.

import { Memory } from './memory.js';

export const faces = '"Liberation Sans", Arial, Arimo, Helvetica, "VL PGothic", "Yu Gothic", Meiryo, "Hiragino Sans", sans-serif';

const mostWidths = 5000;

export class Letters {
    /** @param {Memory} memory */
    constructor(memory) {
        this.memory = memory;
        const scratch = document.createElement('canvas');
        scratch.width = scratch.height = 1;
        this.pen = /** @type {CanvasRenderingContext2D} */ (
            scratch.getContext('2d', { willReadFrequently: true })
        );
        this.font = '';
        /** Of lines that were measured. @type {Map<string, number>} */
        this.widths = new Map();
    }

    /** @param {number} pixels @param {boolean} italic @param {boolean} [bold] */
    take(pixels, italic, bold) {
        const font = `${italic ? 'italic ' : ''}${bold ? 'bold ' : ''}${pixels}px ${faces}`;
        if (font !== this.font) this.pen.font = this.font = font;
    }

    /** @param {string} text @param {number} pixels @param {boolean} [bold] */
    width(text, pixels, bold) {
        const key = `${pixels}${bold ? 'b' : ' '}${text}`;
        let width = this.widths.get(key);
        if (width !== undefined) return width;
        this.take(pixels, false, bold);
        width = this.pen.measureText(text).width;
        if (this.widths.size > mostWidths) this.widths.clear();
        this.widths.set(key, width);
        return width;
    }

    /** What the program asks for. @returns {Record<string, Function>} */
    calls() {
        const { memory } = this;
        return {
            PageMeasure: (at, size, pixels, italic) => {
                this.take(pixels, italic);
                return this.pen.measureText(memory.text(at, size)).width;
            },
            PageLetter: (at, size, pixels, italic, left, base, cover, width, height) => {
                const { canvas } = this.pen;
                if (canvas.width < width || canvas.height < height) {
                    canvas.width = Math.max(canvas.width, width);
                    canvas.height = Math.max(canvas.height, height);
                    this.font = '';
                }
                this.take(pixels, italic);
                this.pen.clearRect(0, 0, width, height);
                this.pen.fillText(memory.text(at, size), left, base);
                const drawn = this.pen.getImageData(0, 0, width, height).data;
                const covers = memory.bytes(cover, width * height);
                for (let i = 0; i < covers.length; ++i) covers[i] = drawn[4 * i + 3];
            },
        };
    }
}
