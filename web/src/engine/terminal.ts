const REDRAW = '\r\x1b[K'; // how znica begins the text that replaces its last line on a terminal

/** Takes apart what a program writes to a terminal: complete lines, and the text of a last line that is redrawn. */
export class Terminal {
    private pending = '';

    constructor(
        private readonly line: (text: string) => void,
        private readonly redrawn: (text: string) => void = () => {},
    ) {}

    write(text: string): void {
        const at = text.lastIndexOf(REDRAW);
        if (at < 0) {
            this.read(text);
            return;
        }
        this.read(text.slice(0, at));
        this.pending = '';
        const last = text.slice(at + REDRAW.length);
        if (last.includes('\n')) this.read(last);
        else if (last !== '') this.redrawn(last);
    }

    private read(text: string): void {
        const lines = (this.pending + text).split('\n');
        this.pending = lines.pop()!;
        for (const line of lines) {
            if (line !== '') this.line(line);
        }
    }
}
