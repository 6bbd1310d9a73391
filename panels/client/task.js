import { PanelError } from './errors.js';
import { endsWork } from './rules.js';

const mostSteps = 256;

/**
 * What is told of one task from the call of `panel.task` on: an async iterator of `{ name, type, message }`.
 * It ends behind the notification that ends the work, and throws when the end can no longer come. Steps that
 * nobody takes do not pile up: of those that wait the oldest go first.
 */
export class Task {
    #steps = [];
    #takers = [];
    #end; // { error } once nothing comes any more
    #forget;

    /** @param {() => void} forget Called once, when the task is over or left. */
    constructor(forget) {
        this.#forget = forget;
    }

    /** For the panel: something is told of the task. */
    tell(step) {
        const taker = this.#takers.shift();
        if (taker !== undefined) taker.resolve({ value: step, done: false });
        else if (this.#steps.push(step) > mostSteps) this.#steps.shift();
        if (endsWork(step.type)) this.#finish();
    }

    /** For the panel: the end will not be heard. @param {PanelError} error */
    fail(error) {
        this.#finish(error);
    }

    #finish(error) {
        if (this.#end !== undefined) return;
        this.#end = { error };
        this.#forget();
        for (const taker of this.#takers.splice(0)) this.#last(taker);
    }

    #last({ resolve, reject }) {
        const { error } = this.#end;
        this.#end = {};
        if (error === undefined) resolve({ value: undefined, done: true });
        else reject(error);
    }

    next() {
        return new Promise((resolve, reject) => {
            if (this.#steps.length > 0) resolve({ value: this.#steps.shift(), done: false });
            else if (this.#end !== undefined) this.#last({ resolve, reject });
            else this.#takers.push({ resolve, reject });
        });
    }

    /** Leaves the task, as a `break` in a loop does. */
    return() {
        this.#steps = [];
        this.#finish();
        return Promise.resolve({ value: undefined, done: true });
    }

    [Symbol.asyncIterator]() {
        return this;
    }
}
