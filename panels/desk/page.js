// What the desk's own pages begin with: the session, the connection, and saying how it stands.

import { beginSession } from '../kit/session.js';
import { setText } from '../kit/elements.js';
import { connectDesk } from './tools.js';

const texts = {
    open: () => 'Connected.',
    waiting: (reason) => `The connection is lost and made again: ${reason}. What is shown may be old.`,
    closed: (reason) =>
        `The connection is closed: ${reason}. What is shown is old. ` +
        'Start the desk again and open the address it prints.',
    refused: (reason) => `${reason}.`,
};

/** What browsers say of a socket that nobody answered is a number. */
const plain = (reason) => (reason === 'closed with 1006' ? 'the desk does not answer' : reason);

function show(event, reason) {
    const place = document.getElementById('connection');
    place.dataset.event = event;
    place.classList.toggle('error', event !== 'open');
    setText(place, texts[event](plain(String(reason).trim().replace(/\.$/, ''))));
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
