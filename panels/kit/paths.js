// Paths and names that people enter. Without DOM.

import { pathEnd } from './format.js';

export const withoutEnding = (name) => name.replace(/(?!^)\.[^.]*$/, '');

/** @returns {string | undefined} Why a file cannot be called so. */
export function nameProblem(name, { path } = {}) {
    if (/[/\\\0]/.test(name)) return 'A name has no / or \\: a file stays in its folder.';
    if (name === '.' || name === '..') return 'Choose a name that is not a folder’s.';
    if (path !== undefined && name === pathEnd(path)) return 'That is its name already.';
    return undefined;
}

/** @returns {string | undefined} Why a path is none that a host can use. */
export const pathProblem = (path) =>
    /^(\/|[A-Za-z]:[/\\]|\\\\)/.test(path.trim())
        ? undefined
        : 'Enter a whole path, such as /media/out or D:\\media.';
