// The program's memory as the page sees it. It moves when it grows, so every look at it is made anew.

/**
 * What the program offers: src/display/web/events.cpp and src/web/start.cpp.
 * @typedef {any} Program
 */

export class Memory {
    constructor() {
        /** @type {Program} */
        this.program = null;
        this.reader = new TextDecoder();
        this.writer = new TextEncoder();
    }

    /** @param {number} at @param {number} size */
    bytes(at, size) {
        return new Uint8Array(this.program.memory.buffer, at, size);
    }

    /** @param {number} at @param {number} size */
    text(at, size) {
        return this.reader.decode(this.bytes(at, size));
    }

    /** Writes an answer to the room that the program has for it. @param {Uint8Array} bytes */
    answer(bytes) {
        const at = this.program.GiveRoom(bytes.length);
        this.bytes(at, bytes.length).set(bytes);
        return at;
    }

    /** Calls what takes a text by place and size, behind other arguments.
     * @param {(...args: any[]) => any} call @param {string} text @param {any[]} first */
    give(call, text, ...first) {
        const bytes = this.writer.encode(text);
        return call(...first, this.answer(bytes), bytes.length);
    }
}
