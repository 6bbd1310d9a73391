// A panel to begin with: it asks for one thing and lists what the host tells. Start the desk with
// `./run desk --panel examples/panel` (or a copy of this folder), open its address, then /panel/.

import { Panel, connectWebSocket } from '/client/index.js';

const mostNews = 100;
const news = document.getElementById('news');
const ingest = document.getElementById('ingest');

const texts = {
    open: () => 'Connected.',
    waiting: (reason) => `The connection is lost and made again: ${reason}.`,
    gap: () => 'Connected again, but news was lost.',
    closed: (reason) => `No connection: ${reason}. Open the address that the desk prints, then this page.`,
};

function show(event, detail) {
    document.getElementById('connection').textContent = texts[event](detail);
    ingest.disabled = event === 'waiting' || event === 'closed';
}

function list(text) {
    const item = document.createElement('li');
    item.textContent = text;
    news.append(item);
    if (news.children.length > mostNews) news.firstChild.remove();
}

/** A panel in a host's own browser has a transport of a few lines instead of this; the rest stays. */
async function connect() {
    const { ok } = await fetch('/session');
    if (!ok) throw new Error('this browser has no session');
    return connectWebSocket(`ws://${location.host}/socket`, { kind: 'library' });
}

function begin(transport) {
    const panel = new Panel(transport, { kind: 'library', connection: show });
    show('open');
    panel.on('*', (message, type) => list(`${type.split('.').at(-1)}, task ${message.header.taskID}`));
    ingest.addEventListener('click', async () => {
        try {
            const { result } = await panel.request('OpenIngestDialog', { targetBin: 'Day 1' });
            list(`The dialog is open: ${result}`);
        } catch (error) {
            list(`The dialog did not open: ${error.message}`);
        }
    });
}

connect().then(begin, (error) => show('closed', error.message));
