// Whether the host may end: not while a task runs or the person said that it shall stay.

import { setText } from './elements.js';
import { plural } from './format.js';
import { refusal } from './words.js';

/** @returns {string | undefined} Why the host shall stay; undefined where it may end. */
export function reasonToStay(running, isKept) {
    if (running > 0) return `${plural(running, 'task runs', 'tasks run')}`;
    return isKept ? '“Keep open” is ticked' : undefined;
}

export class ExitGuard {
    #page;
    #kept = document.getElementById('keep-open');
    #refuse = document.getElementById('refuse');
    #line = document.getElementById('exit');

    /** @param {import('./panel-page.js').PanelPage} page */
    constructor(page) {
        this.#page = page;
        this.#refuse.addEventListener('click', () => this.#say('you asked for it'));
    }

    /** What a host that was asked to end waits for an objection. */
    asked() {
        const own = this.#page.tasks.running.filter(({ by }) => by === undefined);
        const reason = reasonToStay(own.length, this.#kept.checked);
        if (reason === undefined) setText(this.#line, 'The host is about to end.');
        else this.#say(reason);
    }

    async #say(reason) {
        const problem = await this.#page.raise('ExitApp', { allowExit: refusal });
        setText(this.#line, problem ?? `The host was told not to end: ${reason}.`);
    }

    /** What the host says of its end, where it does. */
    heardState(exit) {
        if (exit?.refusedBy !== undefined && exit.refusedBy !== this.#page.panel?.pageID)
            setText(this.#line, `The host stays: ${exit.refusedBy} told it not to end.`);
    }

    update() {
        this.#refuse.disabled = !this.#page.isUsable;
    }
}
