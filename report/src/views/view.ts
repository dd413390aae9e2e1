/** A part of the page that takes its whole width. */
export interface View {
    readonly element: HTMLElement;
    /** The reader comes to it, or leaves it for another. */
    enter?(): void;
    leave?(): void;
    /** A key was pressed outside of text fields; true when it was used. */
    key?(event: KeyboardEvent): boolean;
}
