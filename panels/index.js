// The first page of the desk: whether the host is there, where to go, and who is connected.

import { element } from './kit/elements.js';
import { beginSession, connectPanel } from './kit/session.js';

const kindNames = { library: 'library', mediaCollection: 'media collection' };
const connection = document.getElementById('connection');

/** Folder, name, what it is for; `isThere` says by the state whether there is such a page. */
const pages = [
    ['library/', 'Library', 'Clips: ingest, metadata, transcode, transfer'],
    ['collection/', 'Media collection', 'Assets with their parts, and columns of your own'],
    ['host/', 'Host', 'What the host does: answers, news, faults, playing a day'],
    ['traffic/', 'Traffic', 'What panels and host say to each other'],
    ['panel/', 'Your panel', 'The folder that the desk was started with', ({ author }) => author === true],
];

function show(event, text) {
    connection.dataset.event = event;
    connection.textContent = text;
}

function showPages(state) {
    const links = pages
        .filter(([, , , isThere = () => true]) => isThere(state))
        .map(([href, name, purpose]) =>
            element(
                'li',
                {},
                element(
                    'a',
                    { href },
                    element('strong', { textContent: name }),
                    element('span', { className: 'note', textContent: purpose }),
                ),
            ),
        );
    document.getElementById('pages').replaceChildren(...links);
}

function showPanels(panels = [], ownID) {
    const items = panels.map(({ browserID, kind, faults }) =>
        element(
            'li',
            {},
            `${browserID}, ${kindNames[kind] ?? kind}`,
            browserID === ownID && element('span', { className: 'note', textContent: 'this page' }),
            faults && element('span', { className: 'badge warn', textContent: 'faults on' }),
        ),
    );
    document.getElementById('panels').replaceChildren(...items);
    document.getElementById('none').hidden = items.length > 0;
}

async function connect() {
    const open = () => show('open', `Connected to the host as ${panel.pageID}.`);
    const panel = await connectPanel('library', {
        state: (state) => {
            showPages(state);
            showPanels(state.panels, panel.pageID);
        },
        connection: (event, detail) => {
            if (event === 'open' || event === 'gap') open();
            if (event === 'waiting') show(event, `The connection is lost and made again: ${detail}`);
            if (event === 'closed') show(event, `The connection is closed: ${detail}. Reload the page.`);
        },
    });
    open();
}

showPages({});
try {
    await beginSession();
    await connect();
} catch (error) {
    show('closed', error.message);
}
