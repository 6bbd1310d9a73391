// A WebSocket that is made again when it is lost, after a delay that grows, until that makes no sense.

const isFinal = (code) => code === 1000 || code === 1008 || (code >= 4000 && code < 4100);
const tryAgain = 4100; // what this end closes with when frames do not fit together

export class Connection {
    #options;
    #on;
    #socket;
    #timer;
    #isWelcome = false;
    #isOver = false;
    #failures = 0;
    #failingSince;
    #welcomeAt;

    /**
     * @param {{url: string, socket?: (url: string) => WebSocket, firstDelay?: number, longestDelay?: number,
     *     giveUpAfter?: number, parse?: (text: string) => unknown}} options
     * @param {{hello: () => object, welcome: (frame: object) => string | undefined,
     *     take: (frame: object) => string | undefined, waiting: (reason: string) => void,
     *     closed: (reason: string) => void}} on What to say first, and what frames are for: they return
     *     what is wrong with one. Who closes the connection is not told.
     */
    constructor(
        {
            url,
            socket = (address) => new WebSocket(address),
            firstDelay = 250,
            longestDelay = 8000,
            giveUpAfter = 120000,
            parse = JSON.parse,
        },
        on,
    ) {
        this.#options = { url, socket, firstDelay, longestDelay, giveUpAfter, parse };
        this.#on = on;
        this.#connect();
    }

    get isWelcome() {
        return this.#isWelcome;
    }

    get isOver() {
        return this.#isOver;
    }

    /** @param {string} frame */
    send(frame) {
        this.#socket.send(frame);
    }

    /** What came shows that the connection is good: the next delay is the first one again. */
    confirm() {
        this.#failures = 0;
    }

    close() {
        this.#isOver = true;
        this.#isWelcome = false;
        clearTimeout(this.#timer);
        this.#socket?.close(1000);
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
        socket.onopen = () => socket.send(JSON.stringify(this.#on.hello()));
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
            frame = this.#options.parse(data);
        } catch {
            return 'a frame is no JSON';
        }
        if (typeof frame !== 'object' || frame === null) return 'a frame is no object';
        if (frame.welcome !== undefined) return this.#welcome(frame.welcome);
        return this.#isWelcome ? this.#on.take(frame) : 'a frame before the welcome';
    }

    #welcome(welcome) {
        this.#isWelcome = true; // whoever is told may send
        const fault = this.#on.welcome(welcome);
        if (fault !== undefined) {
            this.#isWelcome = false;
            return fault;
        }
        clearTimeout(this.#timer);
        this.#welcomeAt = Date.now();
        return undefined;
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
        this.#on.waiting(reason || `closed with ${code}`);
        if (!this.#isOver) this.#timer = setTimeout(() => this.#connect(), delay);
    }

    #end(reason) {
        this.#isOver = true;
        this.#isWelcome = false;
        this.#on.closed(reason);
    }
}
