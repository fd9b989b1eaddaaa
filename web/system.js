// What the program asks of its system: time, sound, questions, files that are handed to the person.

import { element } from './controls.js';
import { Memory } from './memory.js';

/** Hands a file to the person. @param {string} name @param {Uint8Array} bytes */
export function download(name, bytes) {
    const link = /** @type {HTMLAnchorElement} */ (element('a'));
    link.href = URL.createObjectURL(new Blob([/** @type {BlobPart} */ (bytes)], { type: 'application/octet-stream' }));
    link.download = name;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}

/** Puts a text where the person can paste it from; also by `file://`. @param {string} text */
export function copy(text) {
    const field = /** @type {HTMLTextAreaElement} */ (element('textarea', 'copied'));
    field.value = text;
    document.body.append(field);
    field.select();
    document.execCommand('copy');
    field.remove();
}

/** Shows a message that stands until it is put away. @param {string} title @param {string} text */
export function say(title, text) {
    const box = /** @type {HTMLDialogElement} */ (element('dialog', 'message'));
    const head = element('h1');
    const words = element('p');
    const ok = element('button');
    head.textContent = title || 'Keelview';
    words.textContent = text;
    ok.textContent = 'OK';
    ok.addEventListener('click', () => box.remove());
    box.addEventListener('close', () => box.remove());
    box.append(head, words, ok);
    document.body.append(box);
    box.showModal();
}

/** The start gun: a crack, a falling thump, and an echo from the shore. */
export class Gun {
    constructor() {
        this.muted = true;
        /** @type {AudioContext | null} */
        this.sounds = null;
    }

    fire() {
        if (this.muted) return;
        this.sounds ??= new AudioContext();
        const { sampleRate } = this.sounds;
        const shot = this.sounds.createBuffer(1, sampleRate * 0.8, sampleRate);
        const samples = shot.getChannelData(0);
        let noise = 7;
        let dull = 0;
        let phase = 0;
        for (let i = 0; i < samples.length; ++i) {
            const t = i / sampleRate;
            noise = (Math.imul(noise, 1664525) + 1013904223) | 0;
            const hiss = noise / 2147483648;
            dull += (hiss - dull) * 0.3;
            phase += (2 * Math.PI * (45 + 95 * Math.exp(-t / 0.06))) / sampleRate;
            const blast = 1.6 * hiss * Math.exp(-t / 0.007) + 2.2 * dull * Math.exp(-t / 0.05);
            const echo = t > 0.12 ? 0.8 * dull * Math.exp(-(t - 0.12) / 0.13) : 0;
            const boom = 0.9 * Math.sin(phase) * Math.exp(-t / 0.16);
            samples[i] = Math.tanh(1.5 * (blast + boom + echo)) * Math.min(1, (0.8 - t) * 10);
        }
        const player = this.sounds.createBufferSource();
        player.buffer = shot;
        player.connect(this.sounds.destination);
        player.start();
    }
}

export class System {
    /** @param {Memory} memory @param {(action: () => void) => void} guard */
    constructor(memory, guard) {
        this.memory = memory;
        this.guard = guard;
        this.gun = new Gun();
        /** @type {Map<number, number>} */
        this.timers = new Map();
        /** @type {Set<number>} */
        this.tasks = new Set();
        /** @type {Set<number>} */
        this.frames = new Set();
        this.framesAsked = false;
        this.tasksAsked = false;
        /** When the first picture was there, milliseconds. */
        this.shown = 0;
        /** @type {Map<string, ImageData>} */
        this.pictures = new Map();
        const channel = new MessageChannel();
        channel.port1.onmessage = () => this.runTasks();
        this.wake = () => channel.port2.postMessage(0);
    }

    runTasks() {
        this.tasksAsked = false;
        const due = [...this.tasks];
        for (const task of due) {
            if (this.tasks.delete(task)) this.guard(() => this.memory.program.OnTime(task));
        }
    }

    /** Brings all that has changed to the page. */
    putFrames() {
        this.framesAsked = false;
        const due = [...this.frames];
        this.frames.clear();
        for (const surface of due) this.guard(() => this.memory.program.OnFrame(surface));
        this.shown ||= performance.now();
    }

    /** @param {number} timer @param {number} milliseconds */
    setTimer(timer, milliseconds) {
        clearInterval(this.timers.get(timer));
        this.timers.delete(timer);
        if (milliseconds <= 0) return;
        this.timers.set(timer, setInterval(() => this.guard(() => this.memory.program.OnTime(timer)), milliseconds));
    }

    /** What the program asks for. @returns {Record<string, Function>} */
    calls() {
        const { memory } = this;
        const root = document.documentElement;
        return {
            PageFollow: (surface) => {
                this.frames.add(surface);
                if (!this.framesAsked) requestAnimationFrame(() => this.putFrames());
                this.framesAsked = true;
            },
            PageTimer: (timer, milliseconds) => this.setTimer(timer, milliseconds),
            PageAskTask: (task) => {
                this.tasks.add(task);
                if (!this.tasksAsked) this.wake();
                this.tasksAsked = true;
            },
            PageDropTask: (task) => this.tasks.delete(task),
            PageUtcMilliseconds: () => Date.now(),
            PageLocalMilliseconds: () => Date.now() - new Date().getTimezoneOffset() * 60000,
            PageSteadySeconds: () => performance.now() / 1000,
            PageScreenRatio: () => Math.min(Math.max(window.devicePixelRatio || 1, 1), 2),
            PageTitle: (text, size) => (document.title = memory.text(text, size)),
            PageWholeScreen: (whole) =>
                void (whole ? root.requestFullscreen() : document.exitFullscreen()).catch(() => {}),
            PageIsWholeScreen: () => document.fullscreenElement !== null,
            PageIsJapanese: () => navigator.language.startsWith('ja'),
            PageSound: () => this.gun.fire(),
            PageCopy: (text, size) => copy(memory.text(text, size)),
            PageOpen: (address, size) => window.open(memory.text(address, size), '_blank', 'noopener,noreferrer'),
            PageHandOver: (name, nameSize, bytes, size) =>
                download(memory.text(name, nameSize), memory.bytes(bytes, size).slice()),
            PageBusy: () => {},
            PageSay: (title, titleSize, text, size) => say(memory.text(title, titleSize), memory.text(text, size)),
            PageAsk: (text, size) => window.confirm(memory.text(text, size)),
            PageInput: (text, size, proposal, proposalSize) => {
                const said = window.prompt(memory.text(text, size), memory.text(proposal, proposalSize));
                if (said !== null) memory.answer(memory.writer.encode(said));
                return said !== null;
            },
            PagePictureSide: (name, size, height) => {
                const picture = this.pictures.get(memory.text(name, size));
                return picture ? (height ? picture.height : picture.width) : 0;
            },
            PagePicture: (name, size, pixels) => {
                const picture = this.pictures.get(memory.text(name, size));
                if (picture) memory.bytes(pixels, picture.data.length).set(picture.data);
            },
            PagePng: (at, width, height) => {
                const sheet = /** @type {HTMLCanvasElement} */ (element('canvas'));
                sheet.width = width;
                sheet.height = height;
                const pixels = new Uint8ClampedArray(memory.program.memory.buffer, at, 4 * width * height);
                sheet.getContext('2d')?.putImageData(new ImageData(pixels, width, height), 0, 0);
                const packed = atob(sheet.toDataURL('image/png').split(',')[1]);
                memory.answer(Uint8Array.from(packed, (sign) => sign.charCodeAt(0)));
            },
        };
    }
}
