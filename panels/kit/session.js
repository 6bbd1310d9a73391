// How pages get to the host: the only place that knows by which transport.

import { Panel, connectWebSocket } from '../client/index.js';

const startAgain = 'Start it again and open the address that it prints.';

/** What browsers say of a socket that nobody answered is a number. */
export const plainReason = (reason) =>
    String(reason)
        .trim()
        .replace(/\.$/, '')
        .replace('closed with 1006', 'the desk does not answer');

/** @returns {string} Why a connection is over, and what to do. */
export function closedText(reason) {
    const text = plainReason(reason);
    return `${text}. ${/does not answer$/.test(text) ? startAgain : 'Reload the page to connect again.'}`;
}

/**
 * The token leaves the address at once, and the page for good: what stays is a cookie that no script sees.
 */
export async function beginSession() {
    const token = new URLSearchParams(location.hash.slice(1)).get('token');
    if (token !== null) history.replaceState(null, '', location.pathname);
    const answer = await (
        token === null
            ? fetch('/session')
            : fetch('/session', { method: 'POST', headers: { 'Desk-Token': token } })
    ).catch(() => {
        throw new Error(`The desk does not answer. ${startAgain}`);
    });
    if (!answer.ok) throw new Error((await answer.text()).trim());
}

/**
 * @param {'library' | 'mediaCollection'} kind
 * @param {object} [options] Of the Panel, see docs/panel-client.md.
 * @returns {Promise<Panel & {handles: string[], pageID: string}>} `handles`: what the host answers beside its
 *     connectors; `pageID`: what it calls this page, also where the panel has another name in what it says.
 */
export async function connectPanel(kind, options = {}) {
    const transport = await connectWebSocket(`ws://${location.host}/socket`, { kind }).catch((error) => {
        throw new Error(closedText(error.message));
    });
    let panel;
    const { connection } = options;
    panel = new Panel(transport, {
        ...options,
        kind,
        // That it is open is told while the panel is made, and is no news to who waits for it.
        connection: (event, detail) => {
            if (panel === undefined) return;
            const texts = { closed: closedText, waiting: plainReason };
            connection?.(event, texts[event]?.(detail) ?? detail);
        },
    });
    addEventListener('pagehide', () => panel.close());
    // A page that comes back from the browser's memory has a closed panel.
    addEventListener('pageshow', ({ persisted }) => persisted && location.reload());
    return Object.defineProperties(panel, {
        handles: { get: () => transport.handles },
        pageID: { get: () => transport.browserID ?? panel.browserID },
    });
}
