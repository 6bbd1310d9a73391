import { PanelError } from './errors.js';

/** A request that waits for its answer. It settles once, and then holds on to nothing. */
export class Pending {
    #answer;
    #signal;
    #timeout;
    #timer;
    #resolve;
    #reject;
    #on;
    #abort = () => {
        this.fail('aborted', `${this.request.identifier} was aborted`, this.#signal.reason);
        this.#on.aborted();
    };

    /**
     * @param request The event.
     * @param {{types: Set<string>, isFor: (browserID: string) => boolean}} answer What answers it.
     * @param {AbortSignal | undefined} signal
     * @param {number} timeout Milliseconds without a word of it.
     * @param {{settled: () => void, aborted: () => void}} on
     */
    constructor(request, answer, signal, timeout, on) {
        this.request = request;
        this.#answer = answer;
        this.#signal = signal;
        this.#timeout = timeout;
        this.#on = on;
        this.promise = new Promise((resolve, reject) => {
            this.#resolve = resolve;
            this.#reject = reject;
        });
        this.#signal?.addEventListener('abort', this.#abort, { once: true });
        this.#wait();
    }

    #wait() {
        clearTimeout(this.#timer);
        const late = () =>
            this.fail('timeout', `${this.request.identifier}: nothing was heard for ${this.#timeout} ms`);
        this.#timer = setTimeout(late, this.#timeout);
    }

    isAnsweredBy(type, browserID) {
        return this.#answer.types.has(type) && this.#answer.isFor(browserID);
    }

    /** Work that goes on may take its time. */
    heardOf(type) {
        if (this.request.progress?.includes(type)) this.#wait();
    }

    answer(message) {
        this.#settle();
        this.#resolve(message);
    }

    fail(code, what, cause) {
        this.#settle();
        this.#reject(new PanelError(code, what, { request: this.request.identifier, cause }));
    }

    #settle() {
        clearTimeout(this.#timer);
        this.#signal?.removeEventListener('abort', this.#abort);
        this.#on.settled();
    }
}
