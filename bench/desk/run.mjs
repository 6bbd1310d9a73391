// Runs the desk's benchmark and prints its table: node run.mjs DESK_BENCH

import { execFile, spawn } from 'node:child_process';
import { createInterface } from 'node:readline';
import { promisify } from 'node:util';

const program = process.argv[2];

const at = (sorted, part) => sorted[Math.min(sorted.length - 1, Math.floor(sorted.length * part))];
const shown = (sorted) => `${Math.round(at(sorted, 0.5))} | ${Math.round(at(sorted, 0.99))}`;

function print(name, row) {
    const cells = [row.toClient, row.toLibrarysEnd, row.toDispatcher, row.fromPanelsEvent].map(shown);
    console.log(`| ${name} | ${cells.join(' | ')} |`);
}

async function measurePage() {
    const { chromium } = await import('../../tests/journeys/node_modules/playwright-core/index.mjs');
    const bench = spawn(program, ['page'], { stdio: ['ignore', 'pipe', 'inherit'] });
    const lines = createInterface({ input: bench.stdout })[Symbol.asyncIterator]();
    const address = new URL(JSON.parse((await lines.next()).value).address);
    const browser = await chromium.launch({ executablePath: process.env.CHROMIUM, args: ['--no-sandbox'] });
    const page = await browser.newPage();
    await page.goto(address.href);
    await page.waitForResponse((response) => response.url().endsWith('/session'));
    await page.goto(`${address.origin}/panel/`);
    const samples = page.locator('html[data-samples]');
    const toClient = JSON.parse(await samples.getAttribute('data-samples', { timeout: 60000 }));
    const row = JSON.parse((await lines.next()).value);
    await browser.close();
    return { ...row, toClient };
}

console.log(`| | callback to client | | of it the library | | raise to dispatcher | | of it the library | |
|---|---|---|---|---|---|---|---|---|
| | median | 99 % | median | 99 % | median | 99 % | median | 99 % |`);
for (const clients of ['1', '50']) {
    const { stdout } = await promisify(execFile)(program, [clients], { maxBuffer: 1 << 28 });
    print(`${clients} raw client${clients === '1' ? '' : 's'}`, JSON.parse(stdout));
}
if (process.env.CHROMIUM) print('one page', await measurePage());
