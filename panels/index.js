// The first page of the desk: whether it is there, where to go, and who is connected.

import { beginPage } from './desk/page.js';
import { shortName } from './client/rules.js';
import { element, setText } from './kit/elements.js';
import { kindNames } from './kit/words.js';

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
    replaceIfOther('pages', links);
}

/** A list that says the same stays, with the focus that it may have. */
function replaceIfOther(id, items) {
    const list = document.getElementById(id);
    const textOf = (nodes) => [...nodes].map(({ textContent }) => textContent).join('\n');
    if (textOf(list.children) !== textOf(items)) list.replaceChildren(...items);
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
    replaceIfOther('panels', items);
    document.getElementById('none').hidden = items.length > 0;
}

/** What else the host does, where it is more than to wait for panels. */
function hostText({ play, exit, record }) {
    const waitsFor = play?.waitsFor && `, waits for ${shortName(play.waitsFor)} from a panel`;
    const waits = play?.isEnded ? ', ended' : waitsFor || '';
    return [
        play && `It plays ${play.file}: line ${play.line} of ${play.lines}${waits}.`,
        play?.problem && `The session has a problem: ${play.problem}.`,
        record && `It is recorded to ${record}.`,
        exit?.isAsked && 'It was asked to end.',
        exit?.refusedBy && `It was asked to end; ${exit.refusedBy} refused.`,
    ]
        .filter(Boolean)
        .join(' ');
}

showPages({});
await beginPage({
    state: (state) => {
        showPages(state);
        showPanels(state.panels);
        setText(document.getElementById('host'), hostText(state));
    },
});
