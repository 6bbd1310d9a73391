/** Why something that a panel wanted did not come about. */
export class PanelError extends Error {
    /**
     * @param {string} code One of those in docs/panel-client.md.
     * @param {string} message One line for people.
     * @param {{request?: string, cause?: unknown}} [details] The request's identifier, and what was thrown.
     */
    constructor(code, message, { request, cause } = {}) {
        super(message, cause === undefined ? undefined : { cause });
        this.name = 'PanelError';
        this.code = code;
        if (request !== undefined) this.request = request;
    }
}
