// A transport to a host that speaks the frames of docs/panel-client.md over a WebSocket.

const mostWaiting = 1024; // frames, in either direction
const isFinal = (code) => code === 1000 || code === 1008 || (code >= 4000 && code < 4100);
const tryAgain = 4100; // what this end closes with when frames do not fit together

class SocketTransport {
    #options;
    #socket;
    #timer;
    #session = null;
    #heard = 0; // the number of the last notification
    #sent = 0;
    #outbox = []; // what the host has not confirmed
    #early = []; // what comes before somebody listens
    #isWelcome = false;
    #isOver = false;
    #failures = 0;
    #failingSince;
    #welcomeAt;
    #listener;
    #observer;
    #ready;

    constructor(options, ready) {
        this.#options = options;
        this.#ready = ready;
        this.#connect();
    }

    raise(type, xml) {
        if (this.#isOver) throw new Error('the connection is closed');
        if (this.#outbox.length >= mostWaiting)
            throw new Error(`${mostWaiting} requests wait for the connection`);
        const frame = JSON.stringify({ raise: type, xml, number: ++this.#sent });
        this.#outbox.push({ number: this.#sent, frame });
        if (this.#isWelcome) this.#socket.send(frame);
    }

    hear(listener) {
        this.#listener = listener;
        for (const pass of this.#early.splice(0)) pass();
        return () => {
            this.#listener = () => {};
        };
    }

    watch(observer) {
        this.#observer = observer;
        return () => {
            this.#observer = undefined;
        };
    }

    close() {
        this.#isOver = true;
        clearTimeout(this.#timer);
        this.#socket.close(1000);
    }

    #connect() {
        let socket;
        try {
            socket = this.#options.socket(this.#options.url);
        } catch (error) {
            return this.#end(error.message);
        }
        this.#socket = socket;
        this.#isWelcome = false;
        let isGone = false;
        const gone = (code, reason) => {
            if (!isGone && !this.#isOver) {
                isGone = true;
                clearTimeout(this.#timer);
                this.#lost(code, reason);
            }
        };
        const leave = (fault) => {
            socket.close(tryAgain, fault);
            gone(tryAgain, fault); // a socket that does not close would keep everything waiting
        };
        this.#timer = setTimeout(() => leave('no welcome'), this.#options.longestDelay);
        socket.onopen = () => {
            const { kind } = this.#options;
            socket.send(JSON.stringify({ hello: { kind, session: this.#session, heard: this.#heard } }));
        };
        socket.onmessage = ({ data }) => {
            if (isGone || this.#isOver) return;
            const fault = this.#take(data);
            if (fault !== undefined) leave(fault);
        };
        socket.onclose = ({ code, reason }) => gone(code, reason);
        socket.onerror = () => {}; // a close follows
    }

    /** @returns {string | undefined} What is wrong with the frame. */
    #take(data) {
        let frame;
        try {
            frame = JSON.parse(data);
        } catch {
            return 'a frame is no JSON';
        }
        if (typeof frame !== 'object' || frame === null) return 'a frame is no object';
        if (frame.welcome !== undefined) return this.#welcome(frame.welcome);
        if (!this.#isWelcome) return 'a frame before the welcome';
        if (Number.isSafeInteger(frame.heard))
            this.#outbox = this.#outbox.filter(({ number }) => number > frame.heard);
        if (frame.state !== undefined) this.#pass(() => this.#observer?.('state', frame.state));
        return frame.notify === undefined ? undefined : this.#notified(frame);
    }

    #notified({ notify, xml, number }) {
        if (typeof notify !== 'string' || typeof xml !== 'string' || !Number.isSafeInteger(number))
            return 'a notification without type, text or number';
        if (number <= this.#heard) return undefined; // sent again
        if (number > this.#heard + 1) return `${number} behind ${this.#heard}`;
        this.#heard = number;
        this.#failures = 0;
        this.#pass(() => this.#listener(notify, xml));
        return undefined;
    }

    #welcome({ session, browserID, handles = [], resumed, number, heard }) {
        if (typeof session !== 'string' || !Number.isSafeInteger(number) || !Array.isArray(handles))
            return 'a welcome without session, number or handles';
        if (resumed === true && number !== this.#heard) return 'a welcome that resumes elsewhere';
        const isGap = this.#session !== null && resumed !== true;
        this.#session = session;
        this.browserID = browserID;
        this.handles = handles;
        this.#heard = number;
        this.#outbox = isGap ? [] : this.#outbox.filter((waiting) => waiting.number > (heard ?? 0));
        this.#isWelcome = true;
        clearTimeout(this.#timer);
        this.#welcomeAt = Date.now();
        for (const { frame } of this.#outbox) this.#socket.send(frame);
        this.#ready.resolve(this);
        this.#pass(() => this.#observer?.('open'));
        if (isGap) this.#pass(() => this.#observer?.('gap'));
        return undefined;
    }

    /** Passes something on, or keeps it until somebody listens; too much of it is lost, as on the way. */
    #pass(pass) {
        if (this.#listener !== undefined) return pass();
        if (this.#early.length >= mostWaiting) this.#early = [() => this.#observer?.('gap')];
        this.#early.push(pass);
    }

    #lost(code, reason) {
        const { firstDelay, longestDelay, giveUpAfter } = this.#options;
        if (isFinal(code)) return this.#end(reason || `closed with ${code}`);
        if (this.#isWelcome && Date.now() - this.#welcomeAt > longestDelay) this.#failures = 0;
        this.#isWelcome = false;
        if (this.#failures++ === 0) this.#failingSince = Date.now();
        const delay =
            Math.min(longestDelay, firstDelay * 2 ** (this.#failures - 1)) * (0.5 + Math.random() / 2);
        if (Date.now() + delay - this.#failingSince > giveUpAfter)
            return this.#end(
                `no connection for ${Math.round(giveUpAfter / 1000)} s: ${reason || `closed with ${code}`}`,
            );
        this.#pass(() => this.#observer?.('waiting', reason || `closed with ${code}`));
        this.#timer = setTimeout(() => this.#connect(), delay);
    }

    #end(reason) {
        this.#isOver = true;
        this.#isWelcome = false;
        this.#ready.reject(new Error(`no connection: ${reason}`));
        this.#pass(() => this.#observer?.('closed', reason));
    }
}

/**
 * @param {string} url
 * @param {{kind?: string, socket?: (url: string) => WebSocket, firstDelay?: number, longestDelay?: number,
 *     giveUpAfter?: number}} [options] What makes a socket; milliseconds between attempts and until the end.
 * @returns {Promise<SocketTransport>} Once the host has said welcome; rejected when it does not come to that.
 */
export function connectWebSocket(url, options = {}) {
    const {
        kind = 'library',
        socket = (address) => new WebSocket(address),
        firstDelay = 250,
        longestDelay = 8000,
        giveUpAfter = 120000,
    } = options;
    return new Promise((resolve, reject) => {
        new SocketTransport(
            { url, kind, socket, firstDelay, longestDelay, giveUpAfter },
            { resolve, reject },
        );
    });
}
