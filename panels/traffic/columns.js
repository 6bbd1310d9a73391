// The columns of the list.

import { element } from '../kit/elements.js';
import { plural } from '../kit/format.js';
import { durationOf } from './log.js';
import { lengthText, timeText } from './texts.js';

const laneNames = ['panels', 'connector', 'host'];

function wayOf({ lanes }) {
    if (lanes.length === 0) return element('span', { className: 'only-heard', textContent: 'none' });
    const [from, to] = lanes;
    const way = element('span', { className: 'way', 'aria-hidden': 'true' }, element('i'));
    way.classList.toggle('back', from > to);
    way.classList.toggle('within', from === to);
    way.style.setProperty('--low', Math.min(from, to));
    way.style.setProperty('--high', Math.max(from, to));
    return way;
}

const wayText = ({ lanes: [from, to] }) =>
    from === to ? laneNames[from] : `${laneNames[from]} to ${laneNames[to]}`;

const badge = (className, textContent) => element('span', { className: `badge ${className}`, textContent });

const remarks = ({ findings, marks }) => [
    ...(findings.length > 0 ? [badge('warn', plural(findings.length, 'finding'))] : []),
    ...marks.map((mark) => badge(/^(?:fault|difference|unhandled)/.test(mark) ? 'bad' : '', mark)),
];

const relationSigns = {
    cause: '↑ cause',
    effect: '↓ effect',
    answer: '↵ answer',
    request: '↑ request',
    'same task': '= same task',
    'same message': '= same message',
};

const whoText = ({ from, to }) => (to === '' || from === to ? from : `${from} → ${to}`);

/**
 * @param {boolean} isNarrow
 * @param {(row: object) => string | undefined} relationOf To the entry that is chosen.
 */
export function columnsFor(isNarrow, relationOf) {
    const relation = (row) => relationSigns[relationOf(row)];
    const all = {
        number: { label: 'No.', width: '7ch', align: 'end' },
        time: {
            label: 'Time',
            width: '11ch',
            align: 'end',
            cell: (row, cell) => cell.append(timeText(row.us)),
        },
        way: {
            label: 'Way',
            width: isNarrow ? '76px' : '100px',
            cell: (row, cell) =>
                cell.append(
                    wayOf(row),
                    element('span', { className: 'only-heard', textContent: wayText(row) }),
                ),
        },
        name: {
            label: 'Name',
            width: isNarrow ? '19ch' : '24ch',
            cell: ({ name }, cell) => {
                cell.dataset.member = 'name';
                cell.append(name);
            },
        },
        remarks: {
            label: 'Remarks',
            width: '21ch',
            cell: (row, cell) => {
                const related = relation(row) === undefined ? [] : [badge('relation', relation(row))];
                cell.append(...[...related, ...remarks(row)].flatMap((each) => [each, ' ']));
            },
        },
        who: { label: 'From → to', width: isNarrow ? '24ch' : '1fr', cell: (row, cell) => cell.append(whoText(row)) },
        kind: { label: 'Kind', width: '12ch' },
        duration: {
            label: 'Took',
            width: '9ch',
            align: 'end',
            cell: (row, cell) => cell.append(lengthOf(row)),
        },
    };
    const keys = isNarrow
        ? ['way', 'name', 'remarks', 'who', 'duration', 'number', 'time']
        : ['number', 'time', 'way', 'name', 'who', 'kind', 'duration', 'remarks'];
    return keys.map((key) => ({ key, ...all[key] }));
}

function lengthOf(row) {
    const length = durationOf(row);
    return length === undefined ? '' : lengthText(length.us);
}
