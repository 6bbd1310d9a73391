// Node has no global of this name before version 20.
const random = globalThis.crypto ?? (await import('node:crypto')).webcrypto;

export const zeroGuid = '00000000-0000-0000-0000-000000000000';

/** @returns {string} A GUID that nobody else has. Pages that are not served securely lack `randomUUID`. */
export function newGuid() {
    const bytes = random.getRandomValues(new Uint8Array(16));
    bytes[6] = (bytes[6] & 0x0f) | 0x40;
    bytes[8] = (bytes[8] & 0x3f) | 0x80;
    const digits = Array.from(bytes, (byte) => byte.toString(16).padStart(2, '0')).join('');
    return digits.replace(/(.{8})(.{4})(.{4})(.{4})(.{12})/, '$1-$2-$3-$4-$5');
}
