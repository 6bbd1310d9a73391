// What the desk's own pages begin with: the session, the connection, and saying how it stands.

import { beginSession, closedText, plainReason } from '../kit/session.js';
import { setText } from '../kit/elements.js';
import { connectDesk } from './tools.js';

const texts = {
    open: () => 'Connected.',
    waiting: (reason) =>
        `The connection is lost and made again: ${plainReason(reason)}. What is shown may be old. ` +
        'A desk that was started anew has another address: it prints it.',
    closed: (reason) => `The connection is closed, and what is shown is old: ${closedText(reason)}`,
    refused: (reason) => `${plainReason(reason)}.`,
};

function show(event, reason) {
    const place = document.getElementById('connection');
    place.dataset.event = event;
    place.classList.toggle('error', event !== 'open');
    setText(place, texts[event](reason));
}

/**
 * @param {object} tell As `connectDesk` takes it; the page's element `connection` says how it stands.
 * @returns {Promise<object>} The desk; a page without a session never gets one, and says so.
 */
export async function beginPage(tell) {
    try {
        await beginSession();
    } catch (error) {
        show('refused', error.message);
        return new Promise(() => {});
    }
    const connection = (event, reason) => {
        show(event, reason);
        tell.connection?.(event, reason);
    };
    const desk = connectDesk(`ws://${location.host}/socket`, { ...tell, connection });
    addEventListener('pagehide', () => desk.close());
    // A page that comes back from the browser's memory has a closed connection.
    addEventListener('pageshow', ({ persisted }) => persisted && location.reload());
    return desk;
}
