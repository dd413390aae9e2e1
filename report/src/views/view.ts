/** A view that takes up the page below the header. */
export interface View {
    readonly element: HTMLElement;
    /** The reader opens the view, or leaves it for another. */
    enter?(): void;
    leave?(): void;
    /** A key was pressed outside a text field; returns whether it was used. */
    key?(event: KeyboardEvent): boolean;
}
