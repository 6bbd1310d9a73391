import { element } from './elements.js';

/** Buttons of a toolbar that say why they cannot be used; so the focus gets to them all the same. */
export class Actions {
    #entries;
    #reason;

    /**
     * @param {{label: string, className?: string, run: () => void, prevented?: () => string | undefined}[]}
     *     actions `prevented`: why it cannot be done now.
     */
    constructor(actions) {
        this.#entries = actions.map(({ label, className = '', run, prevented = () => undefined }) => {
            const button = element('button', { type: 'button', className, textContent: label });
            button.addEventListener('click', () => {
                if ((this.#reason ?? prevented()) === undefined) run();
            });
            return { button, prevented };
        });
    }

    get buttons() {
        return this.#entries.map(({ button }) => button);
    }

    /** @param {string} [reason] Why nothing can be done at all. */
    update(reason) {
        this.#reason = reason;
        for (const { button, prevented } of this.#entries) {
            const why = reason ?? prevented();
            button.setAttribute('aria-disabled', String(why !== undefined));
            button.title = why ?? '';
        }
    }
}

export const noConnection = 'There is no connection to the host.';
