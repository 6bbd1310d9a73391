import { element } from './elements.js';

/** Buttons of a toolbar that say why they cannot be used. */
export class Actions {
    #entries;

    /**
     * @param {{label: string, className?: string, run: () => void, prevented?: () => string | undefined}[]}
     *     actions `prevented`: why it cannot be done now.
     */
    constructor(actions) {
        this.#entries = actions.map(({ label, className = '', run, prevented = () => undefined }) => ({
            button: element('button', { type: 'button', className, textContent: label, onclick: run }),
            prevented,
        }));
    }

    get buttons() {
        return this.#entries.map(({ button }) => button);
    }

    /** @param {string} [reason] Why nothing can be done at all. */
    update(reason) {
        for (const { button, prevented } of this.#entries) {
            const why = reason ?? prevented();
            button.disabled = why !== undefined;
            button.title = why ?? '';
        }
    }
}

export const noConnection = 'There is no connection to the host.';
