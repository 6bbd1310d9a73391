// The first page of the desk: whether the host is there, and who else is.

import { Panel, connectWebSocket } from './client/index.js';

const kindNames = { library: 'library', mediaCollection: 'media collection' };
const connection = document.getElementById('connection');

function show(event, text) {
    connection.dataset.event = event;
    connection.textContent = text;
}

function showPanels({ panels = [] }) {
    const items = panels.map(({ browserID, kind }) => {
        const item = document.createElement('li');
        item.textContent = `${browserID}, ${kindNames[kind] ?? kind}`;
        return item;
    });
    document.getElementById('panels').replaceChildren(...items);
    document.getElementById('none').hidden = items.length > 0;
}

/** The token leaves the address at once, and the page for good: what stays is a cookie that no script sees. */
async function beginSession() {
    const token = new URLSearchParams(location.hash.slice(1)).get('token');
    history.replaceState(null, '', location.pathname);
    const answer = await (token === null
        ? fetch('/session')
        : fetch('/session', { method: 'POST', headers: { 'Desk-Token': token } }));
    if (!answer.ok) throw new Error(await answer.text());
}

async function connect() {
    const transport = await connectWebSocket(`ws://${location.host}/socket`, { kind: 'library' });
    const open = () => show('open', `Connected to the host as ${transport.browserID}.`);
    const panel = new Panel(transport, {
        kind: 'library',
        state: showPanels,
        connection: (event, detail) => {
            if (event === 'open' || event === 'gap') open();
            if (event === 'waiting') show(event, `The connection is lost and made again: ${detail}`);
            if (event === 'closed') show(event, `The connection is closed: ${detail}. Reload the page.`);
        },
    });
    open();
    addEventListener('pagehide', () => panel.close());
}

try {
    await beginSession();
    await connect();
} catch (error) {
    show('closed', error.message);
}
