// What a page holds: blocks of packed files.

/** The signs that a text of the page cannot have. */
const rare = [0, 13, 60];

/** The bytes of a text of seven bits a sign, as src/base/html.h has it. @param {string} text */
function unpackText(text) {
    const bytes = new Uint8Array((text.length * 14) >> 3);
    let held = 0;
    let bits = 0;
    let to = 0;
    for (let at = 0; at < text.length; ++at) {
        const sign = text.charCodeAt(at);
        if (sign > 255) {
            held = (held << 7) | rare[(sign >> 7) - 2];
            bits += 7;
            if (bits > 7) bytes[to++] = held >> (bits -= 8);
        }
        held = (held << 7) | (sign & 127);
        bits += 7;
        if (bits > 7) bytes[to++] = held >> (bits -= 8);
    }
    return bytes.subarray(0, to);
}

/** The files of a block by their names. In it stand the sizes of name and content, 4 bytes each, the low one first;
 * name and content.
 * @param {string} id @returns {Promise<Map<string, Uint8Array>>} */
export async function block(id) {
    const packed = new Blob([unpackText(document.getElementById(id)?.textContent ?? '')]);
    const Unpacker = /** @type {any} */ (globalThis).DecompressionStream;
    const plain = packed.stream().pipeThrough(new Unpacker('gzip'));
    const bytes = new Uint8Array(await new Response(plain).arrayBuffer());
    const view = new DataView(bytes.buffer);
    const reader = new TextDecoder();
    const files = new Map();
    for (let at = 0; at + 8 <= bytes.length; ) {
        const name = at + 8 + view.getUint32(at, true);
        const end = name + view.getUint32(at + 4, true);
        files.set(reader.decode(bytes.subarray(at + 8, name)), bytes.subarray(name, end));
        at = end;
    }
    return files;
}
