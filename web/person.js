// What the person does, by mouse, finger and keys, told to the program.

import { Controls } from './controls.js';
import { Memory } from './memory.js';

const down = 0;
const up = 1;
const move = 2;
const leave = 3;

/** As KeyPress::Name in src/display/form.h. */
const namedKeys = [' ', 'ArrowLeft', 'ArrowRight', 'Home', 'End', 'Escape', 'F11', '?'];
const shiftKey = 16;
const otherKey = 1;
const linesOfNotch = 3;
const pixelsOfNotch = 100;
const slop = 6; // pixels that a finger trembles
const zoomOfNotch = 1.25; // as the map zooms by the wheel

/** @typedef {import('./controls.js').Part} Part */

export class Person {
    /** @param {Memory} memory @param {Controls} controls @param {(action: () => void) => void} guard */
    constructor(memory, controls, guard) {
        this.memory = memory;
        this.controls = controls;
        this.guard = guard;
        this.window = 0;
        /** @type {Part[]} */
        this.under = [];
        /** Fingers on the glass. @type {Map<number, {part: Part, event: PointerEvent, pressed: boolean}>} */
        this.fingers = new Map();
        this.spread = 0;
        this.lineRest = 0;
        const { root } = controls;
        /** @type {[string, (event: any) => void][]} */
        const handlers = [
            ['pointerdown', (event) => this.pointerDown(event)],
            ['pointermove', (event) => this.pointerMove(event)],
            ['pointerup', (event) => this.pointerUp(event)],
            ['pointercancel', (event) => this.pointerUp(event)],
            ['pointerleave', (event) => event.target === root && this.hover([])],
            ['wheel', (event) => this.wheel(event)],
            ['contextmenu', (event) => this.takesText(event.target) || event.preventDefault()],
            ['click', (event) => this.click(event)],
            ['input', (event) => this.input(event)],
            ['change', (event) => this.change(event)],
        ];
        for (const [name, handler] of handlers) {
            root.addEventListener(name, (event) => guard(() => handler(event)), {
                passive: false, capture: name === 'pointerleave',
            });
        }
        document.addEventListener('keydown', (event) => guard(() => this.keyDown(event)));
        document.addEventListener('keyup', (event) => guard(() => this.keyUp(event)));
        window.addEventListener('blur', () => guard(() => this.window && this.program.OnKey(this.window, shiftKey, 0)));
    }

    get program() {
        return this.memory.program;
    }

    /** @param {EventTarget | null} target */
    takesText(target) {
        const node = /** @type {any} */ (target);
        return node.tagName === 'TEXTAREA' || (node.tagName === 'INPUT' && node.type === 'text');
    }

    /** A place in the drawing area of a control, whatever the style sheet has turned or enlarged.
     * @param {MouseEvent} event @param {Part} part */
    placeIn(event, part) {
        let x = event.offsetX;
        let y = event.offsetY;
        let node = /** @type {HTMLElement | null} */ (event.target);
        for (; node && node !== part.box; node = /** @type {HTMLElement | null} */ (node.offsetParent)) {
            x += node.offsetLeft + node.clientLeft;
            y += node.offsetTop + node.clientTop;
        }
        return [Math.floor(x), Math.floor(y)];
    }

    /** @param {Part} part @param {number} what @param {MouseEvent} event @param {number} button */
    tell(part, what, event, button) {
        const [x, y] = this.placeIn(event, part);
        const any = event.shiftKey || event.ctrlKey || event.altKey;
        if (this.controls.parts.has(part.address))
            this.program.OnPointer(part.address, what, button, event.shiftKey, any, x, y);
    }

    /** The pointer is on these controls from now on, the innermost first. @param {Part[]} parts */
    hover(parts) {
        for (const part of this.under) {
            if (!parts.includes(part) && this.controls.parts.has(part.address))
                this.program.OnPointer(part.address, leave, 0, false, false, 0, 0);
        }
        this.under = parts;
    }

    /** @param {Part | undefined} part */
    chain(part) {
        const parts = [];
        for (let each = part; each; each = each.parent) parts.push(each);
        return parts;
    }

    /** @param {PointerEvent} event */
    pointerDown(event) {
        const part = this.controls.at(event.target);
        if (!part) return;
        if (event.pointerType === 'touch') return this.fingerDown(event, part);
        if (part.kind === 'surface') part.box.setPointerCapture(event.pointerId);
        this.tell(part, down, event, [1, 4, 2][event.button] ?? 0);
    }

    /** @param {PointerEvent} event */
    pointerMove(event) {
        if (event.pointerType === 'touch') return this.fingerMove(event);
        const part = this.controls.at(event.target);
        this.hover(this.chain(part));
        const held = event.buttons & 1 ? 1 : event.buttons & 2 ? 2 : event.buttons & 4 ? 4 : 0;
        if (part) this.tell(part, move, event, held);
    }

    /** @param {PointerEvent} event */
    pointerUp(event) {
        if (event.pointerType === 'touch') return this.fingerUp(event);
        const part = this.controls.at(event.target);
        if (part) this.tell(part, up, event, [1, 4, 2][event.button] ?? 0);
    }

    // A finger is the left button, but presses only when it moves on or goes up: two of them pinch.

    /** @param {PointerEvent} event @param {Part} part */
    fingerDown(event, part) {
        if (part.kind === 'surface') part.box.setPointerCapture(event.pointerId);
        this.fingers.set(event.pointerId, { part, event, pressed: false });
        if (this.fingers.size !== 2) return;
        for (const finger of this.fingers.values()) {
            if (finger.pressed) this.tell(finger.part, up, event, 1);
            finger.pressed = false;
        }
        this.spread = this.distance();
    }

    distance() {
        const [one, other] = [...this.fingers.values()].map(({ event }) => event);
        return Math.hypot(one.clientX - other.clientX, one.clientY - other.clientY);
    }

    /** @param {PointerEvent} event */
    fingerMove(event) {
        const finger = this.fingers.get(event.pointerId);
        if (!finger) return;
        const begun = finger.event;
        if (this.fingers.size === 1) {
            const far = Math.hypot(event.clientX - begun.clientX, event.clientY - begun.clientY) > slop;
            if (!finger.pressed && !far) return;
            if (!finger.pressed) this.tell(finger.part, down, begun, 1);
            finger.pressed = true;
            return this.tell(finger.part, move, event, 1);
        }
        finger.event = event;
        const before = this.spread;
        this.spread = this.distance();
        if (before < 1 || this.spread < 1) return;
        const [one, other] = [...this.fingers.values()].map((each) => this.placeIn(each.event, each.part));
        const notches = -Math.log(this.spread / before) / Math.log(zoomOfNotch);
        this.program.OnWheel(finger.part.address, 0, notches, (one[0] + other[0]) / 2, (one[1] + other[1]) / 2);
    }

    /** @param {PointerEvent} event */
    fingerUp(event) {
        const finger = this.fingers.get(event.pointerId);
        if (!finger) return;
        const alone = this.fingers.size === 1 && this.spread === 0;
        this.fingers.delete(event.pointerId);
        if (this.fingers.size === 0) this.spread = 0;
        if (alone && !finger.pressed && event.type === 'pointerup') this.tell(finger.part, down, event, 1);
        if (finger.pressed || (alone && event.type === 'pointerup')) this.tell(finger.part, up, event, 1);
        this.hover([]);
    }

    /** @param {WheelEvent} event */
    wheel(event) {
        const perNotch = event.deltaMode === 1 ? linesOfNotch : event.deltaMode === 2 ? 1 : pixelsOfNotch;
        const notches = event.deltaY / perNotch;
        this.lineRest += notches * linesOfNotch;
        const lines = Math.trunc(this.lineRest);
        this.lineRest -= lines;
        for (const part of this.chain(this.controls.at(event.target))) {
            const [x, y] = this.placeIn(event, part);
            if (!this.program.OnWheel(part.address, lines, notches, x, y)) continue;
            event.preventDefault();
            return;
        }
    }

    /** @param {MouseEvent} event */
    click(event) {
        const part = this.controls.at(event.target);
        if (part?.kind === 'button') this.program.OnClick(part.address);
        if ((part?.kind === 'check' || part?.kind === 'option') && event.target === part.works)
            this.program.OnTick(part.address, part.works.checked);
    }

    /** @param {Event} event */
    input(event) {
        const part = this.controls.at(event.target);
        if (part?.kind === 'scroll') this.program.OnValue(part.address, Number(part.works.value));
        if (part && this.takesText(part.works))
            this.memory.give((at, size) => this.program.OnText(part.address, at, size), part.works.value);
    }

    /** @param {Event} event */
    change(event) {
        const part = this.controls.at(event.target);
        if (part?.kind === 'combo' || part?.kind === 'list')
            this.program.OnItem(part.address, part.works.selectedIndex);
        if (part?.kind === 'field') this.program.OnTextDone(part.address);
    }

    /** @param {KeyboardEvent} event */
    keyDown(event) {
        if (!this.window || document.querySelector('dialog[open]')) return;
        this.program.OnKey(this.window, event.key === 'Shift' ? shiftKey : otherKey, 1);
        const name = namedKeys.indexOf(event.key);
        const tool = event.ctrlKey || event.altKey || event.metaKey;
        const target = /** @type {any} */ (event.target);
        if (name < 0 || tool || this.takesText(target) || target.tagName === 'SELECT') return;
        if (this.program.OnNamedKey(this.window, name, event.shiftKey, event.repeat)) event.preventDefault();
    }

    /** @param {KeyboardEvent} event */
    keyUp(event) {
        if (!this.window) return;
        this.program.OnKey(this.window, event.key === 'Shift' ? shiftKey : otherKey, 0);
        const part = this.controls.at(event.target);
        if (part && /^(Tab|ArrowUp|ArrowDown)$/.test(event.key)) this.program.OnTabbedTo(part.address);
        if (part && part.box.tabIndex === 0 && part.kind !== 'button' && (event.key === ' ' || event.key === 'Enter'))
            if (part.kind === 'surface' || part.kind === 'plate') this.program.OnClick(part.address);
    }
}
