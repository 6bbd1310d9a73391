// The host page: what the host's own windows would show and do.

import { beginPage } from '../desk/page.js';
import { element } from '../kit/elements.js';
import { soon } from '../kit/soon.js';
import { timeText } from '../traffic/texts.js';
import { beginCallbacks } from './callbacks.js';
import { byID } from './forms.js';
import { beginIngest, showDialog } from './ingest.js';
import { beginState, showState, tasksIn } from './state.js';
import { beginStatuses, showSources } from './status.js';
import { Watch } from './watch.js';

const watch = new Watch();
const levelClasses = { WARN: 'warn', ERROR: 'bad' };
let desk;
let state; // undefined until the desk says how things stand
let reported; // the newest report that is shown

const deskOf = () => desk;

function showReports() {
    const [newest] = watch.reports;
    if (newest === undefined || newest.number === reported) return;
    reported = newest.number;
    const cell = (textContent, className = '') => element('td', { textContent, className });
    byID('reports').replaceChildren(
        ...watch.reports.map(({ us, level, text, isShown, by }) =>
            element(
                'tr',
                {},
                cell(timeText(us)),
                cell(level, levelClasses[level] ?? ''),
                cell(isShown ? `${text} (to be shown to the user)` : text),
                cell(by ?? ''),
            ),
        ),
    );
    byID('reports-none').hidden = true;
    byID('reports').closest('.wide').hidden = false;
}

/** Many entries are one picture. */
const showSoon = soon(() => {
    showDialog(watch.dialog);
    showReports();
    showSources(tasksIn(state ?? {}), watch.requests);
    if (state !== undefined) showState(state);
});

function hear(entries) {
    watch.hear(entries);
    showSoon();
}

function stateChanged(next) {
    state = next;
    showSoon();
}

beginState(deskOf, watch);
beginCallbacks(deskOf);
beginStatuses(deskOf);
beginIngest(deskOf, watch);

desk = await beginPage({ traffic: hear, state: stateChanged });
