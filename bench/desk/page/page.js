// Hears of callbacks whose task says when they were made, and raises requests whose task says so.

import { Panel, connectWebSocket } from '/client/index.js';

const rounds = 1000;
const between = 2; // ms
const now = () => performance.timeOrigin + performance.now(); // ms

/** The wall clock in nanoseconds, as the first half of an id. */
function stampedTask() {
    const digits = BigInt(Math.round(now() * 1000)) * 1000n;
    const text = digits.toString(16).padStart(16, '0');
    return `${text.slice(0, 8)}-${text.slice(8, 12)}-${text.slice(12)}-0000-000000000001`;
}

const stampIn = (task) => Number(BigInt(`0x${task.replaceAll('-', '').slice(0, 16)}`)) / 1e6;

const transport = await connectWebSocket(`ws://${location.host}/socket`, { kind: 'library' });
const panel = new Panel(transport, { kind: 'library' });
const samples = [];

function raise() {
    const transferItemList = [{ src: '/media/a.mov', dst: '/backup' }];
    panel.request('TransferRequest', { header: { taskID: stampedTask() }, transferItemList }).catch(() => {});
}

panel.on('TransferProgress', async ({ header }) => {
    samples.push((now() - stampIn(header.taskID)) * 1000);
    if (samples.length < rounds) return;
    document.documentElement.dataset.samples = JSON.stringify(samples.sort((a, b) => a - b));
    for (let i = 0; i < rounds; ++i) {
        raise();
        await new Promise((resolve) => setTimeout(resolve, between));
    }
});
raise();
