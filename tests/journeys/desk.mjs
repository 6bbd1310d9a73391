// A desk with its pages in a browser, for journeys: what a person does there by roles and labels.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { randomUUID } from 'node:crypto';
import { EventEmitter, once } from 'node:events';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { after, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';

const patience = 45000; // milliseconds for what a person waits for, on a busy machine
const limit = 240000;
const axeSource = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');
const pathOf = (place) => fileURLToPath(new URL(place, import.meta.url));

export const sessionFile = (name) => pathOf(`../sessions/${name}.jsonl`);

let browser;
after(() => browser?.close());

/** A tool's connection: what passes, how things stand, and commands, as the desk's own pages have them. */
class Tool {
    entries = [];
    state;
    #page;
    #news = new EventEmitter();

    async begin(page) {
        this.#page = page;
        await page.exposeFunction('hear', (what) => {
            if (what.entries) this.entries.push(...what.entries);
            this.state = what.state ?? this.state;
            this.#news.emit('news');
        });
        await page.evaluate(async () => {
            const { beginSession } = await import('/kit/session.js');
            const { connectDesk } = await import('/desk/tools.js');
            await beginSession();
            const tell = {
                traffic: (entries) => window.hear({ entries }),
                state: (state) => window.hear({ state }),
            };
            window.desk = connectDesk(`ws://${location.host}/socket`, tell);
        });
        await this.until(({ state }) => state, 'the connection of a tool');
        return this;
    }

    do(name, content) {
        return this.#page.evaluate(([name, content]) => window.desk.do(name, content), [name, content]);
    }

    async until(holds, what) {
        const signal = AbortSignal.timeout(patience);
        while (!holds(this))
            await once(this.#news, 'news', { signal }).catch(() =>
                assert.fail(`in vain waited for ${what}; the state is ${JSON.stringify(this.state)}`));
    }

    /** Until the session that is played waits for a request. */
    waitsFor(name) {
        const waits = ({ state }) => state.play.waitsFor?.endsWith(`.${name}`);
        return this.until(waits, `play to wait for ${name}`);
    }
}

export class Desk {
    tool;
    errors = [];
    #process;
    #address;
    #contexts = [];
    #forgiven = [];
    #storageState; // with the cookie of the session
    #exit;

    async start(args) {
        const isRoot = process.getuid() === 0; // for whom Chromium has no sandbox
        browser ??= await chromium.launch({
            executablePath: process.env.CHROMIUM,
            chromiumSandbox: !isRoot,
        });
        this.#process = spawn(process.env.DESK, args, { stdio: ['ignore', 'pipe', 'inherit'] });
        this.#exit = once(this.#process, 'exit');
        let printed = '';
        for await (const text of this.#process.stdout) {
            printed += text;
            if (printed.includes('\n')) break;
        }
        this.#address = new URL(/http:\S+/.exec(printed)[0]);
        // A script as the page does nothing by itself.
        const page = await this.#goTo(await this.#window(), `/desk/tools.js${this.#address.hash}`);
        this.tool = await new Tool().begin(page);
        this.#storageState = await page.context().storageState();
    }

    /** @returns {Promise<number>} With what the desk ended. */
    get exitCode() {
        return this.#exit?.then(([code]) => code);
    }

    /** Opens a page in a window of its own: browsers draw tabs that are behind others once a second. */
    async open(path) {
        const page = await this.#window();
        const complain = (text) => this.errors.push(`${path}: ${String(text).split('\n')[0]}`);
        page.on('pageerror', complain);
        page.on('console', (message) => message.type() === 'error' && complain(message.text()));
        return this.#goTo(page, path);
    }

    async #window() {
        const context = await browser.newContext({ storageState: this.#storageState });
        this.#contexts.push(context);
        return context.newPage();
    }

    async #goTo(page, path) {
        page.setDefaultTimeout(patience);
        await page.goto(new URL(path, this.#address).href);
        return page;
    }

    /** Opens a page that connects, and waits until it has. */
    async openConnected(path) {
        const page = await this.open(path);
        await connectionOf(page, 'open');
        return page;
    }

    /** What pages complain of that matches belongs to the journey. */
    forgive(pattern) {
        this.#forgiven.push(pattern);
    }

    get complaints() {
        return this.errors.filter((error) => !this.#forgiven.some((pattern) => pattern.test(error)));
    }

    async end() {
        for (const context of this.#contexts) await context.close();
        if (this.#process?.exitCode === null) this.#process.kill('SIGINT');
        return this.exitCode;
    }
}

/**
 * A test with a desk of its own, which ends cleanly. Errors on pages fail it, what the content policy blocked
 * included.
 */
export function journey(title, args, go) {
    test(title, { timeout: limit }, async () => {
        const desk = new Desk();
        let code;
        try {
            await desk.start(args);
            await go(desk);
        } catch (error) {
            if (desk.errors.length > 0) error.message += `\npages complained: ${desk.errors.join('\n')}`;
            throw error;
        } finally {
            code = await desk.end();
        }
        assert.deepEqual([...new Set(desk.complaints)], []);
        assert.equal(code, 0);
    });
}

/** Waits until the page says so of its connection. */
export const connectionOf = (page, event) => page.locator(`#connection[data-event=${event}]`).waitFor();

export const button = (place, name) => place.getByRole('button', { name, exact: true });
export const rowOf = (page, key) => page.locator(`[role=row][data-key=${JSON.stringify(key)}]`);

async function fillIn(dialog, fields) {
    for (const [label, value] of Object.entries(fields)) {
        const field = dialog.getByLabel(label, { exact: true });
        if (typeof value === 'boolean') await field.setChecked(value);
        else {
            const isChoice = await field.evaluate(({ localName }) => localName === 'select');
            await (isChoice ? field.selectOption(value) : field.fill(value));
        }
    }
}

/** Selects rows by their keys, chooses an action, and answers the questions of its dialog. */
export async function act(page, { rows = [], choose, fields, confirm }) {
    for (const [i, key] of rows.entries())
        await rowOf(page, key).click({ modifiers: i > 0 ? ['Control'] : [] });
    await button(page, choose).click();
    if (confirm === undefined) return;
    const dialog = page.getByRole('dialog');
    await fillIn(dialog, fields);
    // A page without a connection keeps its dialog, so that it can be confirmed again.
    for (let isOpen = true; isOpen;) {
        await button(dialog, confirm).click();
        isOpen = await dialog.waitFor({ state: 'detached', timeout: 2000 }).then(
            () => false,
            () => true,
        );
    }
}

/**
 * Does each of the steps when play waits for its request, and waits for what it shows; then until play waits
 * for another request, or has ended.
 */
export async function playDay(page, tool, steps, next) {
    for (const { request, shows, ...what } of steps) {
        await tool.waitsFor(request);
        await act(page, what);
        await shows(page).waitFor();
    }
    if (next !== undefined) await tool.waitsFor(next);
    else await tool.until(({ state }) => state.play.isEnded, 'the end of the session');
    assert.equal(tool.state.play.problem, null);
}

/** Sees in the traffic view what a page asked for, and that a connector took it. */
export async function checkTraffic(traffic, tool, by, names) {
    await traffic.getByRole('combobox', { name: 'Who', exact: true }).selectOption(by);
    const list = traffic.getByRole('grid', { name: 'Traffic' });
    for (const name of names) {
        await traffic.getByRole('searchbox', { name: 'Find' }).fill(name);
        await list.getByRole('row').filter({ hasText: name }).filter({ hasText: by }).first().waitFor();
    }
    assert.deepEqual(tool.entries.filter(({ marks = [] }) => marks.includes('unhandled')), []);
}

/** The host ingests files, ten seconds long. */
export function tellClips(tool, paths) {
    const [task, frame] = [randomUUID(), 10160640000];
    const rest = { startTime: 0, endTime: 250 * frame, frameRate: frame };
    const items = paths.map((filePath) => ({ filePath, ...rest }));
    return tool.do('callback', { callback: 'OnIngestItemsReady', args: [task, task, task, items, {}] });
}

/** The host answers a request that runs as a task. */
export async function answer(tool, what, callback, argsOf) {
    const find = ({ state }) => state.tasks.find((task) => task.what === what);
    await tool.until(find, `a task of ${what}`);
    await tool.do('callback', { callback, args: argsOf(find(tool)) });
}

/** What keeps people with aids away from the page fails. */
export async function checkAccess(page, what) {
    await page.evaluate(axeSource);
    const found = await page.evaluate(async () => {
        // Preloading fetches styles against the policy.
        const { violations } = await window.axe.run({ resultTypes: ['violations'], preload: false });
        return violations;
    });
    const faults = found
        .filter(({ impact }) => ['serious', 'critical'].includes(impact))
        .flatMap(({ nodes }) => nodes.map(({ target, failureSummary }) => `${target}: ${failureSummary}`));
    assert.deepEqual(faults, [], what);
}

/** A picture of the page in build/journeys, where pictures are wished for. */
export async function shoot(page, name) {
    const path = pathOf(`../../build/journeys/${name}.png`);
    if (process.env.JOURNEY_SHOTS) await page.screenshot({ path });
}
