// What a panel needs to talk with its host: docs/panel-client.md.

export { buildRequest } from './build.js';
export { PanelError } from './errors.js';
export { newGuid, zeroGuid } from './guid.js';
export { Panel } from './panel.js';
export { parseNotification } from './parse.js';
export { rateOf, resultNames, ticksPerSecond } from './values.js';
export { connectWebSocket } from './websocket.js';
