"""Markdown tables, and replacing them in a document."""


def table(header, rows):
    lines = [header, ["---"] * len(header), *rows]
    return "\n".join("| " + " | ".join(str(cell) for cell in line) + " |" for line in lines)


def replace_section(document, name, text):
    """Replaces the text between the lines "<!-- name -->" and "<!-- end of name -->" of a file."""
    begin, end = f"<!-- {name} -->\n", f"<!-- end of {name} -->"
    old = document.read_text()
    head, _, rest = old.partition(begin)
    _, _, tail = rest.partition(end)
    if not rest or not tail:
        raise SystemExit(f"{document} lacks the section {name}.")
    document.write_text(head + begin + "\n" + text + "\n\n" + end + tail)
