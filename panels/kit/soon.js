/** @returns {() => void} Asks for `act`, which comes a moment later, once for all who asked. */
export function soon(act, pace = 50) {
    let timer;
    return () => {
        timer ??= setTimeout(() => {
            timer = undefined;
            act();
        }, pace);
    };
}
