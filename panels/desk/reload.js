// On the page of a panel under work: loads it anew when a file of its folder has changed.

const period = 1000; // ms
let known;

async function look() {
    try {
        const answer = await fetch('/panel-version');
        const version = await answer.text();
        if (answer.ok && known !== undefined && version !== known) location.reload();
        if (answer.ok) known = version;
    } catch {
        // the desk is away; the page says so by itself
    }
    setTimeout(look, period);
}

look();
