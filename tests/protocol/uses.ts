// What authors may write.
import {
    AnswerOf, Answers, FinishImportFileRequest, ImportXMPRequest, InsertDynamicColumnsRequest, Message, Notifications,
    Requests, TranscodeRequestRequest, TransferStatusNotification,
} from "./assetconnector";

const id = "0f8b2c1e-5d3a-4b6f-9e7c-1a2b3c4d5e6f";
const header = { browserID: "panel-1", msgID: id, taskID: id };
const bare: Message = { header };
export const requests: [ImportXMPRequest, FinishImportFileRequest, InsertDynamicColumnsRequest] = [
    { header, fileList: ["/media/a.mov"], batchID: id },
    { header, actionResultList: [{ filePath: "/media/a.mov", result: 0 }, null] },
    { header, newDynamicColumns: [[id, "Scene"]], previousColumnNames: [[id, "Take"]] },
];
const conversion: TranscodeRequestRequest = {
    header,
    transcodeItemList: [{ filePath: "/media/a.mov", startTime: 254016000000n, duration: null, frameRate: 10160640000n }],
    outputXMP: false,
};

export function failed(notification: TransferStatusNotification): string[] {
    return (notification.transferResultList ?? []).flatMap((copy) => (copy && copy.result !== 0 ? [copy.src] : []));
}

// A client is two functions.
declare function ask<Name extends keyof Requests>(name: Name, request: Requests[Name]): Promise<AnswerOf<Name>>;
declare function on<Name extends keyof Notifications>(name: Name, handle: (told: Notifications[Name]) => void): void;
on("com.velmo.host.notification.TranscodeProgress", ({ percentage }) => percentage?.toFixed());
ask("com.velmo.browser.event.TranscodeRequest", conversion).then((answer) => answer.outputFilePath?.length);
ask("com.velmo.browser.event.GetCurrentWorkMode", bare).then((answer) => answer.currentWorkMode?.length);

export const everyAnswerIsANotification: Answers[keyof Answers] extends keyof Notifications ? true : false = true;
export const everyRequestHasItsAnswers: keyof Requests extends keyof Answers ? true : false = true;
