// Types of the client. What messages hold is typed by the protocol itself, which is installed one folder up.

import type {
    AnswerOf,
    Answers,
    Guid,
    Header,
    Message,
    Notifications,
    Rate,
    Requests,
    Sparse,
} from "../assetconnector.js";

/** The last part of an identifier. */
export type ShortName<Identifier extends string> = Identifier extends `${string}.${infer Rest}`
    ? ShortName<Rest>
    : Identifier;

/** The identifiers of requests and notifications, and the last parts of them. */
export type RequestName = keyof Requests | ShortName<keyof Requests>;
export type NotificationName = keyof Notifications | ShortName<keyof Notifications>;

type IdentifierIn<Events, Name> = {
    [Identifier in keyof Events & string]: Name extends Identifier | ShortName<Identifier>
        ? Identifier
        : never;
}[keyof Events & string];

/** What a request takes; what its header leaves out is filled in. */
export type RequestContent<Name extends RequestName> = Omit<
    Requests[IdentifierIn<Requests, Name>],
    'header'
> & { header?: Partial<Header> };

/** What `request` gives; null where nobody answers by design. */
export type Answer<Name extends RequestName> = [Answers[IdentifierIn<Requests, Name>]] extends [never]
    ? null
    : AnswerOf<IdentifierIn<Requests, Name>>;

export type Kind = 'library' | 'mediaCollection';

/** What the panel needs of its host; see docs/panel-client.md for the rest. */
export interface Transport {
    /** Raises a request. May throw when that is not possible now. */
    raise(type: string, xml: string): void;
    /** @returns What ends it, where that is possible. */
    hear(listener: (type: string, xml: string) => void): (() => void) | void;
    watch?(observer: (event: ConnectionEvent | 'state', detail?: unknown) => void): (() => void) | void;
    /** The requests that the host handles itself, beside its connectors. */
    handles?: Iterable<string>;
    browserID?: string;
    close?(): void;
}

export type ConnectionEvent = 'open' | 'waiting' | 'gap' | 'closed';

export type ErrorCode =
    'unhandled' | 'needs' | 'disconnected' | 'timeout' | 'aborted' | 'garbled' | 'invalid';

export class PanelError extends Error {
    readonly code: ErrorCode;
    /** The identifier of the request. */
    readonly request?: string;
    readonly cause?: unknown;
}

export interface PanelOptions {
    kind?: Kind;
    /** What the host calls the panel, where the transport does not say it. */
    browserID?: string;
    /** Milliseconds; 30,000 where nothing is said. */
    timeout?: number;
    state?: (state: unknown) => void;
    connection?: (event: ConnectionEvent, detail?: unknown) => void;
    problem?: (error: unknown, details: { type?: string; xml?: string }) => void;
}

export interface RequestOptions {
    signal?: AbortSignal;
    /** Milliseconds without the answer or progress. */
    timeout?: number;
}

/** Something that is told of a task. */
export interface Step<Message_ = Message> {
    name: string;
    type: string;
    message: Message_;
}

export interface Task extends AsyncIterableIterator<Step> {
    return(): Promise<IteratorResult<Step>>;
}

export class Panel {
    constructor(transport: Transport, options?: PanelOptions);
    readonly browserID: string | undefined;
    request<Name extends RequestName>(
        name: Name,
        content?: RequestContent<Name>,
        options?: RequestOptions,
    ): Promise<Answer<Name>>;
    task(id: Guid): Task;
    on<Name extends NotificationName>(
        name: Name,
        handler: (message: Notifications[IdentifierIn<Notifications, Name>], type: string) => void,
    ): () => void;
    on(name: '*', handler: (message: Message, type: string) => void): () => void;
    close(): void;
}

/** The text of a request. @throws PanelError */
export function buildRequest(message: Sparse<Message>): string;

/** The record of a notification's text. @throws PanelError */
export function parseNotification(type: string, xml: string): Message;

export function newGuid(): Guid;
export const zeroGuid: Guid;
export const ticksPerSecond: bigint;

/** So many frames in so many seconds. */
export function rateOf(frames: number | bigint, seconds?: number | bigint): Rate;

/** The names of results by their numbers. */
export const resultNames: ReadonlyMap<number, string>;

export interface SocketOptions {
    kind?: Kind;
    socket?: (url: string) => unknown;
    firstDelay?: number;
    longestDelay?: number;
    giveUpAfter?: number;
}

export function connectWebSocket(url: string, options?: SocketOptions): Promise<Transport>;
