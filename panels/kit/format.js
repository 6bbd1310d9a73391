// Values as people read them.

import { resultNames, ticksPerSecond } from '../client/values.js';

const two = (number) => String(number).padStart(2, '0');

/**
 * Frames a second, rounded: what counts in a timecode. Undefined where a frame is no length to count in, or
 * so many of them are far from a second, as 13 are at 12.5.
 */
function framesOf(rate) {
    if (typeof rate !== 'bigint' || rate <= 1n) return undefined;
    const frames = (ticksPerSecond + rate / 2n) / rate;
    const off = frames * rate - ticksPerSecond;
    const isNear = (off < 0n ? -off : off) * 200n <= ticksPerSecond;
    return isNear && frames <= 1000n ? frames : undefined;
}

/**
 * @param {bigint | null | undefined} ticks
 * @param {bigint | null} [rate] Ticks of a frame; without one the text ends with thousandths of a second.
 * @returns {string} `00:00:12:05` or `00:00:12.200`; nothing is dropped at 29.97.
 */
export function timecode(ticks, rate) {
    if (typeof ticks !== 'bigint') return '';
    const sign = ticks < 0n ? '-' : '';
    const size = ticks < 0n ? -ticks : ticks;
    const frames = framesOf(rate);
    const [units, count] =
        frames === undefined ? [1000n, (size * 1000n) / ticksPerSecond] : [frames, size / rate];
    const seconds = count / units;
    const rest = count % units;
    const clock = [seconds / 3600n, (seconds / 60n) % 60n, seconds % 60n].map(two).join(':');
    return frames === undefined
        ? `${sign}${clock}.${String(rest).padStart(3, '0')}`
        : `${sign}${clock}:${two(rest)}`;
}

/**
 * @param {string} text As `timecode` writes it; what stands left of the seconds may be left out.
 * @param {bigint} [rate]
 * @returns {bigint | undefined} Ticks; undefined where the text is none.
 */
export function ticksOf(text, rate) {
    const frames = framesOf(rate);
    const [, clock, rest = '0'] =
        (frames === undefined
            ? /^((?:\d{1,3}:){0,2}\d{1,5})(?:\.(\d{1,3}))?$/
            : /^((?:\d{1,3}:){2}\d{1,2}):(\d{1,3})$/
        ).exec(text.trim()) ?? [];
    if (clock === undefined) return undefined;
    const seconds = clock.split(':').reduce((sum, part) => sum * 60n + BigInt(part), 0n);
    if (frames === undefined)
        return seconds * ticksPerSecond + (BigInt(rest.padEnd(3, '0')) * ticksPerSecond) / 1000n;
    return BigInt(rest) < frames ? (seconds * frames + BigInt(rest)) * rate : undefined;
}

/** A length; of one that nobody knows a dash. */
export const duration = (ticks, rate) => timecode(ticks, rate) || '–';

/** @returns {string} `25 fps`, `23.976 fps`; empty where there is none. */
export function rateText(rate) {
    if (typeof rate !== 'bigint' || rate <= 1n) return '';
    const exact = Number((ticksPerSecond * 10000n) / rate) / 10000;
    return exact >= 0.01 && exact <= 1000 ? `${Math.round(exact * 1000) / 1000} fps` : '';
}

const lastSeparator = (path) => Math.max(path.lastIndexOf('/'), path.lastIndexOf('\\'));

/** @returns {string} What stands behind the last `/` or `\`. */
export const pathEnd = (path) => path.slice(lastSeparator(path) + 1);

/** @returns {string} What stands before it. */
export const pathFolder = (path) => path.slice(0, Math.max(lastSeparator(path), 0));

const resultTexts = {
    OK: 'Done',
    ERROR: 'Failed',
    Ignore: 'Left out',
    Canceled: 'Cancelled',
    AccessDenied: 'No access',
};

/** @returns {string} The name of a result, which notifications have as a number or as a name. */
export const resultName = (result) =>
    typeof result === 'number' ? (resultNames.get(result) ?? 'ERROR') : (result ?? '');

/** @returns {string} What people read of it; a text of the host's own stays. */
export const resultText = (result) => resultTexts[resultName(result)] ?? resultName(result);

export const isGood = (result) => resultName(result) === 'OK';

/** @returns {string} `1 clip`, `2 clips` */
export const plural = (count, one, many = `${one}s`) =>
    `${count.toLocaleString('en')} ${count === 1 ? one : many}`;

const errorTexts = {
    unsent: 'There is no connection to the host: nothing was sent. Try again when it is back.',
    unhandled: 'This host does not offer that. Nothing was sent.',
    timeout: 'No answer came. Try again; if that does not help, look at the host.',
    garbled: 'The answer could not be read. It may be done all the same: look, then try again.',
    aborted: 'Cancelled.',
    disconnected: 'The connection was lost before the answer came. Look whether it is done, then try again.',
};

/** @returns {string} What became of a request, and what to do. */
export const errorText = (error) =>
    errorTexts[error?.code] ?? `That could not be sent: ${error?.message ?? error}`;
