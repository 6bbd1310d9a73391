// The program, whose path the environment has, and its JSON, in which a bigint is a number.

import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';

export const folder = new URL('.', import.meta.url);

/** @returns {string} What the program prints for this input. */
export function run(input, ...args) {
    return execFileSync(process.env.ASSET_CONNECTOR, args, { input, encoding: 'utf8', maxBuffer: 1 << 26 });
}

/** @returns {string} JSON. */
export function jsonOf(record) {
    const marked = JSON.stringify(record, (_, value) =>
        typeof value === 'bigint' ? `\u0001${value}\u0001` : value);
    return marked.replace(/"\\u0001(-?\d+)\\u0001"/g, '$1');
}

/** @returns {object} What the program's JSON says, times and rates as bigint. */
export function recordOf(json) {
    const isBig = /("(?:startTime|endTime|duration|(?:in|customIn|customOut)Point|frameRate)": *)(-?\d+)/g;
    return JSON.parse(json.replace(isBig, '$1"\\u0001$2"'), (_, value) =>
        typeof value === 'string' && value.startsWith('\u0001') ? BigInt(value.slice(1)) : value);
}

/** @returns {object[]} The lines of a session file. */
export function session(name) {
    return readFileSync(new URL(`../sessions/${name}.jsonl`, folder), 'utf8').split('\n')
        .filter((line) => /^\s*\{/.test(line)).map((line) => JSON.parse(line));
}
