// How pages get to the host: the only place that knows by which transport.

import { Panel, connectWebSocket } from '../client/index.js';

/**
 * The token leaves the address at once, and the page for good: what stays is a cookie that no script sees.
 */
export async function beginSession() {
    const token = new URLSearchParams(location.hash.slice(1)).get('token');
    if (token !== null) history.replaceState(null, '', location.pathname);
    const answer = await (token === null
        ? fetch('/session')
        : fetch('/session', { method: 'POST', headers: { 'Desk-Token': token } }));
    if (!answer.ok) throw new Error((await answer.text()).trim());
}

/**
 * @param {'library' | 'mediaCollection'} kind
 * @param {object} [options] Of the Panel, see docs/panel-client.md.
 * @returns {Promise<Panel & {handles: string[], pageID: string}>} `handles`: what the host answers beside its
 *     connectors; `pageID`: what it calls this page, also where the panel has another name in what it says.
 */
export async function connectPanel(kind, options = {}) {
    const transport = await connectWebSocket(`ws://${location.host}/socket`, { kind });
    let panel;
    const { connection } = options;
    panel = new Panel(transport, {
        ...options,
        kind,
        // That it is open is told while the panel is made, and is no news to who waits for it.
        connection: (...args) => panel !== undefined && connection?.(...args),
    });
    addEventListener('pagehide', () => panel.close());
    // A page that comes back from the browser's memory has a closed panel.
    addEventListener('pageshow', ({ persisted }) => persisted && location.reload());
    return Object.defineProperties(panel, {
        handles: { get: () => transport.handles },
        pageID: { get: () => transport.browserID ?? panel.browserID },
    });
}
