// Values as records have them, and as texts have them.

import model from './model.js';
import { zeroGuid } from './guid.js';

/** A second has so many ticks. */
export const ticksPerSecond = 254016000000n;

/** @returns {bigint} A frame rate as records have it: 25, or 30000 over 1001, frames per second. */
export const rateOf = (frames, seconds = 1) => (ticksPerSecond * BigInt(seconds)) / BigInt(frames);

const results = model.forms.find((form) => form.name === 'result');

/** The names of results by their numbers, as the text `result` of a message has them. */
export const resultNames = new Map(results.values.map((value, i) => [value, results.words[i]]));

const sectionBegin = '<![CDATA[';
const sectionEnd = ']]>';
const named = { '&amp;': '&', '&lt;': '<', '&gt;': '>', '&quot;': '"', '&apos;': "'" };
const escaped = { '&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;', "'": '&apos;' };

const withoutReferences = (text) =>
    text.replace(/&(?:amp|lt|gt|quot|apos);/g, (reference) => named[reference]);
const withReferences = (text) => text.replace(/[&<>"']/g, (character) => escaped[character]);

/** @returns {string} The text with references by number resolved, such as `&#xD;`. */
function withoutNumbers(text) {
    return text.replace(/&#(?:x([0-9a-fA-F]{1,6})|([0-9]{1,7}));/g, (reference, hexadecimal, decimal) => {
        const point = hexadecimal === undefined ? Number(decimal) : parseInt(hexadecimal, 16);
        return point <= 0x10ffff ? String.fromCodePoint(point) : reference;
    });
}

/** One pass over named and numbered references, so that none is read in what another one gave. */
function resolved(text) {
    return text.replace(
        /&(?:amp|lt|gt|quot|apos|#x[0-9a-fA-F]{1,6}|#[0-9]{1,7});/g,
        (reference) => named[reference] ?? withoutNumbers(reference),
    );
}

function unwrapped(text) {
    const begin = text.indexOf(sectionBegin);
    const end = text.lastIndexOf(sectionEnd);
    return begin < 0 || end < begin + sectionBegin.length
        ? text
        : text.slice(begin + sectionBegin.length, end);
}

function packetFrom(raw, isDecoded) {
    if (!isDecoded) return unwrapped(resolved(raw));
    return unwrapped(raw.startsWith(sectionBegin) ? raw : withoutNumbers(raw));
}

function integerFrom(text) {
    const digits = /^\s*([+-]?\d+)/.exec(text);
    const number = digits === null ? 0 : Number(digits[1]);
    return Math.abs(number) <= 0x7fffffff || number === -0x80000000 ? number : 0;
}

const countFrom = (text) => BigInt.asIntN(64, BigInt(/^\s*\+?(-?\d{1,19})(?!\d)/.exec(text)?.[1] ?? 0));

function rateFrom(text) {
    const match = /^\s*f(-?\d{1,19})(?:s(\d{1,19}))?\s*$/.exec(text);
    const frames = BigInt(match?.[1] ?? 0);
    return frames === 0n ? 1n : BigInt.asIntN(64, (ticksPerSecond * BigInt(match[2] ?? 1)) / frames);
}

function guidFrom(text) {
    const guid = text.replace(/^\{(.*)\}$/s, '$1').toLowerCase();
    return isGuid(guid) ? guid : zeroGuid;
}

export const isGuid = (text) => /^[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}$/i.test(text);

/** A word's number; of what is no word, that of a missing element. */
function numberOf(slot, word) {
    return slot.values[slot.words.indexOf(word)] ?? slot.place.missing ?? 0;
}

/**
 * @param slot Where it stands.
 * @param {string} raw What stands there.
 * @param {boolean} isDecoded Whether the host took a layer of references off.
 * @returns {unknown} The value as records have it; of a time the frames.
 */
export function valueFrom(slot, raw, isDecoded) {
    if (slot.form === 'xmp') return packetFrom(raw, isDecoded);
    const text = isDecoded ? withoutNumbers(raw) : resolved(raw);
    switch (slot.form) {
        case 'xml':
            return withoutReferences(text);
        case 'guid':
            return guidFrom(text);
        case 'integer':
        case 'unsigned':
        case 'order':
            return integerFrom(text);
        case 'time':
            return countFrom(text);
        case 'rate':
            return rateFrom(text);
        case 'boolean':
            return slot.type === 'boolean' ? text === 'true' : numberOf(slot, text);
        default:
            return slot.type === 'integer' ? numberOf(slot, text) : text;
    }
}

function gcd(a, b) {
    while (b !== 0n) [a, b] = [b, a % b];
    return a < 0n ? -a : a;
}

function rateText(rate) {
    const common = gcd(ticksPerSecond, rate);
    const [frames, seconds] = [ticksPerSecond / common, rate / common];
    const [sign, over] = seconds < 0n ? ['-', -seconds] : ['', seconds];
    return `f${sign}${frames}${over === 1n ? '' : `s${over}`}`;
}

/**
 * @param slot Where it shall stand.
 * @param {unknown} value As records have it, of a type that `check` found right; of a time the frames.
 * @returns {string | undefined} The text, not encoded; undefined where its absence says the same.
 */
export function textOf(slot, value) {
    switch (slot.form) {
        case 'xml':
            return withReferences(value);
        case 'xmp':
            return sectionBegin + value + sectionEnd;
        case 'rate':
            return rateText(value);
        case 'boolean':
            return typeof value === 'boolean' ? String(value) : slot.words[slot.values.indexOf(value)];
        default:
            return slot.values === undefined ? String(value) : slot.words[slot.values.indexOf(value)];
    }
}

/** What XML cannot carry is replaced, as the host does it. */
const unusable = new RegExp(
    '[\\0-\\x08\\x0b\\x0c\\x0e-\\x1f\\ufffe\\uffff]' +
        '|[\\ud800-\\udbff](?![\\udc00-\\udfff])|(?<![\\ud800-\\udbff])[\\udc00-\\udfff]',
    'g',
);

export const encodedText = (text) =>
    text.replace(unusable, '\ufffd').replace(/[&<>\r]/g, (unit) => escaped[unit] ?? '&#xD;');

export const encodedAttribute = (text) =>
    text
        .replace(unusable, '\ufffd')
        .replace(/[&<"\t\n\r]/g, (unit) => escaped[unit] ?? `&#${unit.charCodeAt(0)};`);
