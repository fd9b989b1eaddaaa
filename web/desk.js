// What the page has around the race display: the bar at its top, and, where it is narrow, the tabs below the map.

import { Controls, element } from './controls.js';
import { copy, download, say } from './system.js';

/** @typedef {{en: string, ja: string}} Words */

/** @type {Record<string, Words>} */
const words = {
    language: { en: '\u65e5\u672c\u8a9e', ja: 'English' },
    link: { en: 'Copy link', ja: '\u30ea\u30f3\u30af\u3092\u30b3\u30d4\u30fc' },
    copied: { en: 'Copied', ja: '\u30b3\u30d4\u30fc\u3057\u307e\u3057\u305f' },
    documents: { en: 'Documents', ja: '\u8cc7\u6599' },
    noDocuments: { en: 'This race has no documents.', ja: '\u3053\u306e\u30ec\u30fc\u30b9\u306b\u8cc7\u6599\u306f\u3042\u308a\u307e\u305b\u3093\u3002' },
    gun: { en: 'Gun: off', ja: '\u53f7\u7832: \u5207' },
    gunOn: { en: 'Gun: on', ja: '\u53f7\u7832: \u5165' },
    close: { en: 'Close', ja: '\u9589\u3058\u308b' },
    boats: { en: 'Boats', ja: '\u8247' },
    graphs: { en: 'Graphs', ja: '\u30b0\u30e9\u30d5' },
    tables: { en: 'Tables', ja: '\u8868' },
    side: { en: 'Panel', ja: '\u30d1\u30cd\u30eb' },
    more: { en: 'Controls', ja: '\u64cd\u4f5c' },
};

const narrowest = 700; // pixels of the window, from which on the display is as on a desktop
const barHeight = 28;
const filmHeight = 94;
const columnWidth = 266; // of what stands right of the map in the display's own layout
const timeBarWidth = 30;
const margin = 5;
const sideWidth = 380;

/** The tabs of a narrow page: the view that each shows in the map's place, and what stands below it. */
const tabs = [
    { name: 'boats', view: 'Option9' },
    { name: 'graphs', view: 'Option10' },
    { name: 'tables', view: 'Option11' },
    { name: 'side', view: 'Option9' },
    { name: 'more', view: 'Option9' },
];
/** Where controls stand in a narrow page: the part of the page, and the control that they lie in else. */
const moved = {
    film: [['PicTimeBar', 'window'], ['Frame3', 'Picture7'], ['Text2', 'Picture7'], ['HScroll1', 'Picture7']],
    below: [['Picture8', 'window'], ['Picture16', 'window'], ['Picture5', 'window'], ['Picture7', 'window'],
        ['Frame5', 'GPIC']],
};

export class Desk {
    /** @param {Controls} controls */
    constructor(controls) {
        this.controls = controls;
        this.english = true;
        this.narrow = false;
        this.bar = element('header');
        this.film = element('section');
        this.film.id = 'film';
        this.tabBar = element('nav');
        this.below = element('section');
        this.below.id = 'below';
        /** @type {Record<string, HTMLButtonElement>} */
        this.buttons = {};
        for (const name of ['language', 'link', 'documents', 'gun']) this.bar.append(this.button(name));
        for (const { name } of tabs) {
            const button = this.button(name);
            button.setAttribute('role', 'tab');
            button.addEventListener('click', () => this.showTab(name));
            this.tabBar.append(button);
        }
        this.tabBar.setAttribute('role', 'tablist');
        controls.root.before(this.bar);
        controls.root.append(this.film, this.tabBar, this.below);
    }

    /** @param {string} name @returns {HTMLButtonElement} */
    button(name) {
        const made = /** @type {HTMLButtonElement} */ (element('button'));
        made.id = `page-${name}`;
        made.type = 'button';
        this.buttons[name] = made;
        return made;
    }

    /** @param {string} name */
    say(name) {
        return words[name][this.english ? 'en' : 'ja'];
    }

    /** @param {boolean} english @param {boolean} gun whether it is heard */
    speak(english, gun) {
        this.english = english;
        document.documentElement.lang = english ? 'en' : 'ja';
        for (const [name, button] of Object.entries(this.buttons)) button.textContent = this.say(name);
        if (gun) this.buttons.gun.textContent = this.say('gunOn');
        this.buttons.gun.setAttribute('aria-pressed', String(gun));
    }

    /** @param {string} link */
    giveLink(link) {
        copy(link);
        this.buttons.link.textContent = this.say('copied');
        setTimeout(() => (this.buttons.link.textContent = this.say('link')), 2000);
    }

    /** Offers the documents as files to keep; none of them is opened here.
     * @param {{name: string, bytes: Uint8Array}[]} documents */
    offer(documents) {
        if (documents.length === 0) return say('', this.say('noDocuments'));
        const box = /** @type {HTMLDialogElement} */ (element('dialog', 'message'));
        const list = element('ul');
        for (const { name, bytes } of documents) {
            const link = element('button', 'link');
            link.textContent = name;
            link.addEventListener('click', () => download(name, bytes));
            const item = element('li');
            item.append(link);
            list.append(item);
        }
        const close = element('button');
        close.textContent = this.say('close');
        close.addEventListener('click', () => box.remove());
        box.addEventListener('close', () => box.remove());
        box.append(list, close);
        document.body.append(box);
        box.showModal();
    }

    /** The size that the display is laid out for. On a narrow page its map is as wide as the window, and all that
     * stands beside it is placed by the style sheet. */
    size() {
        const { innerWidth, innerHeight } = window;
        this.narrow = innerWidth < narrowest;
        document.documentElement.classList.toggle('narrow', this.narrow);
        if (!this.narrow) return { width: innerWidth, height: innerHeight - barHeight };
        const side = Math.min(innerWidth, innerHeight - barHeight - filmHeight - 40);
        document.documentElement.style.setProperty('--map', `${side}px`);
        document.documentElement.style.setProperty('--list', String((innerWidth / columnWidth).toFixed(3)));
        const beside = columnWidth + timeBarWidth + 6 * margin;
        return { width: side + beside + Math.max(sideWidth, innerWidth), height: side + 2 * margin };
    }

    /** Has the controls stand where the page's width wants them. */
    place() {
        for (const [part, names] of Object.entries(moved)) {
            for (const [name, home] of names) {
                const box = document.getElementById(name);
                const parent = this.narrow
                    ? document.getElementById(part)
                    : home === 'window' ? this.controls.root.querySelector('.window') : document.getElementById(home);
                if (box && parent && box.parentElement !== parent) parent.append(box);
            }
        }
        if (this.narrow) this.showTab(this.controls.root.dataset.tab ?? 'boats');
    }

    /** @param {string} name */
    showTab(name) {
        this.controls.root.dataset.tab = name;
        const tab = tabs.find((each) => each.name === name);
        for (const each of tabs) this.buttons[each.name].setAttribute('aria-selected', String(each.name === name));
        const view = this.controls.named(tab?.view ?? 'Option9');
        if (view && !view.works.checked) view.works.click();
        // Beside a list of two columns the panel has no room of its own, and is slid out.
        const panel = document.getElementById('Picture16');
        if (name === 'side' && panel?.classList.contains('gone')) this.controls.named('Command14')?.works.click();
    }
}
