// What must not compile, line by line.
import {
    AnswerOf, AssetItem, ImportXMPRequest, Message, Notifications, OpenIngestDialogRequest, Requests, Sparse,
    TransferStatusNotification,
} from "./assetconnector";

declare const id: string;
declare const header: Message["header"];
declare const transfer: TransferStatusNotification;
declare const nobody: AnswerOf<"com.velmo.browser.event.FinishImportFile">;

// @ts-expect-error: no header
export const headless: Message = { filePath: "/media/a.mov" };
// @ts-expect-error: a member that is none
export const unknown: Message = { header, fileLists: [] };
// @ts-expect-error: a boolean for a number
export const flag: Message = { header, mediaUseLocalFile: true };
// @ts-expect-error: a map is an array of pairs
export const map: Message = { header, newDynamicColumns: { [id]: "Scene" } };
// @ts-expect-error: a GUID alone is no pair
export const single: Message = { header, newDynamicColumns: [[id]] };
// @ts-expect-error: a notification holds whole items
export const part: Message = { header, assetItemList: [{ assetName: "Interview" }] };
// @ts-expect-error: a time as a number
export const time: Sparse<AssetItem> = { inPoint: 254016000000 };
// @ts-expect-error: a member that is none, two items deep
export const deep: Sparse<AssetItem> = { subAssetItemList: [{ subAssetItemList: [{ nme: "part" }] }] };
// @ts-expect-error: a rate is never null
export const rate: Message["mediaPropertyInfo"] = { assetID: id, filePath: "", frameRate: null, startTime: null, duration: null };
// @ts-expect-error: without what the request needs
export const needless: ImportXMPRequest = { header };
// @ts-expect-error: with what it does not read
export const unread: OpenIngestDialogRequest = { header, fileList: [] };
// @ts-expect-error: a notification without results of assets
export const results = transfer.actionResultList;
// @ts-expect-error: a list may be missing
export const count = transfer.transferResultList.length;
// @ts-expect-error: nobody answers
export const answer = nobody.result;
// @ts-expect-error: a notification is no request
export type Wrong = Requests["com.velmo.host.notification.ImportXMPStatus"];
// @ts-expect-error: no such notification
export type None = Notifications["com.velmo.host.notification.ImportXmpStatus"];
