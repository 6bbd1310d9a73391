// Times and lengths as people read them.

/** @returns {string} Since the desk began: `3:05.123`, and from an hour on `1:02:03.456`. */
export function timeText(us) {
    if (us === undefined) return '';
    const parts = [Math.floor(us / 3600e6), Math.floor(us / 60e6) % 60, Math.floor(us / 1e6) % 60];
    const clock = parts[0] === 0 ? parts.slice(1) : parts;
    const [first, ...rest] = clock;
    const thousandths = String(Math.floor(us / 1000) % 1000).padStart(3, '0');
    return `${[first, ...rest.map((part) => String(part).padStart(2, '0'))].join(':')}.${thousandths}`;
}

const units = [
    [60e6, 60e6, 'min', 1],
    [1e6, 1e6, 's', 2],
    [1e4, 1e3, 'ms', 0],
    [1e3, 1e3, 'ms', 1],
    [0, 1, 'µs', 0],
];

/** @returns {string} `640 µs`, `3.2 ms`, `12 ms`, `1.25 s`, `2.5 min` */
export function lengthText(us) {
    const [, size, unit, digits] = units.find(([least]) => Math.abs(us) >= least);
    return `${(us / size).toFixed(digits)} ${unit}`;
}
