// What authors may and may not write with the client.
import { Panel, Transport, connectWebSocket, rateOf, resultNames } from './client/index';

declare const transport: Transport;
const panel = new Panel(transport, { kind: 'mediaCollection', connection: (event) => event === 'gap' });

export async function work(signal: AbortSignal): Promise<void> {
    const answer = await panel.request(
        'TransferRequest',
        { transferItemList: [{ src: '/a', dst: '/b' }] },
        { signal },
    );
    for (const copy of answer.transferResultList ?? []) resultNames.get(copy?.result ?? 0)?.toUpperCase();
    const nothing: null = await panel.request('com.velmo.browser.event.ExitApp');
    for await (const { name, message } of panel.task('0f8b2c1e-5d3a-4b6f-9e7c-1a2b3c4d5e6f'))
        console.log(name, message.percentage?.toFixed(), nothing);
    panel.on('ImportXMPStatus', ({ assetItemList }) => assetItemList?.[0]?.inPoint);
    panel.on('*', (message, type) => [message.header.taskID, type.length])();
    new Panel(await connectWebSocket('ws://localhost/'));
}

declare const console: { log(...values: unknown[]): void };
// @ts-expect-error: no such request
panel.request('Transfer');
// @ts-expect-error: a member that the request does not read
panel.request('TransferRequest', { fileList: [] });
// @ts-expect-error: a time as a number
panel.request('TranscodeRequest', { transcodeItemList: [{ startTime: 5, frameRate: rateOf(25) }] });
// @ts-expect-error: without what the request needs
panel.request('ImportXMP', {});
// @ts-expect-error: the answer has no such member
panel.request('TransferRequest').then((answer) => answer.thumbnailRequest);
// @ts-expect-error: no such notification
panel.on('ImportXmpStatus', () => undefined);
// @ts-expect-error: a transport hears, too
new Panel({ raise: () => undefined });
