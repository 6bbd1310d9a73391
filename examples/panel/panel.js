// A panel to begin with: it asks for one thing and lists what the host tells. Start the desk with
// `./run desk --panel examples/panel` (or a copy of this folder), open its address, then /panel/.

import { Panel, connectWebSocket } from '/client/index.js';

const say = (text) => (document.getElementById('connection').textContent = text);

function list(text) {
    const item = document.createElement('li');
    item.textContent = text;
    document.getElementById('news').append(item);
}

/** A panel in a host's own browser has a transport of a few lines instead of this; the rest stays. */
const transport = await connectWebSocket(`ws://${location.host}/socket`, { kind: 'library' });

const panel = new Panel(transport, {
    kind: 'library',
    connection: (event, detail) => say(event === 'open' ? 'Connected.' : `${event}: ${detail}`),
});
say('Connected.');

panel.on('*', (message, type) => list(`${type.split('.').at(-1)}, task ${message.header.taskID}`));

const ingest = document.getElementById('ingest');
ingest.disabled = false;
ingest.addEventListener('click', async () => {
    try {
        const { result } = await panel.request('OpenIngestDialog', { targetBin: 'Day 1' });
        list(`The dialog is open: ${result}`);
    } catch (error) {
        list(`The dialog did not open: ${error.message}`);
    }
});
