// The first page of the desk: whether it is there, where to go, and who is connected.

import { beginPage } from './desk/page.js';
import { element } from './kit/elements.js';

const kindNames = { library: 'library', mediaCollection: 'media collection' };

/** Folder, name, what it is for; `isThere` says by the state whether there is such a page. */
const pages = [
    ['library/', 'Library', 'Clips: ingest, metadata, transcode, transfer'],
    ['collection/', 'Media collection', 'Assets with their parts, and columns of your own'],
    ['host/', 'Host', 'What the host does: answers, news, faults, playing a day'],
    ['traffic/', 'Traffic', 'What panels and host say to each other'],
    ['panel/', 'Your panel', 'The folder that the desk was started with', ({ author }) => author === true],
];

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

function showPanels(panels = []) {
    const items = panels.map(({ browserID, kind, faults }) =>
        element(
            'li',
            {},
            `${browserID}, ${kindNames[kind] ?? kind}`,
            faults && element('span', { className: 'badge warn', textContent: 'faults on' }),
        ),
    );
    document.getElementById('panels').replaceChildren(...items);
    document.getElementById('none').hidden = items.length > 0;
}

showPages({});
await beginPage({
    state: (state) => {
        showPages(state);
        showPanels(state.panels);
    },
});
