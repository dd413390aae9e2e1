"""Tables of what the combinations found."""
from measuring.markdown import table

HEADER = ["preparation", "approach", "task", "worst source", "median source", "two seeds", "seconds"]


def number(value):
    return "" if value is None else f"{value:.2f}"


def row(outcome):
    found = [number(value) for value in outcome[3:]]
    return [outcome.preparation, outcome.approach, *found]


def mean(values):
    known = [value for value in values if value is not None]
    return sum(known) / len(known) if known else None


def overall(outcomes):
    """The means over the data sets, one row per combination."""
    rows = []
    for preparation, approach in dict.fromkeys((o.preparation, o.approach) for o in outcomes):
        same = [o for o in outcomes if (o.preparation, o.approach) == (preparation, approach)]
        rows.append([preparation, approach, *(number(mean(column)) for column in list(zip(*same))[3:])])
    return rows


def tables(outcomes):
    parts = [f"**Means over the data sets**\n\n{table(HEADER, overall(outcomes))}"]
    for name in dict.fromkeys(outcome.data for outcome in outcomes):
        rows = [row(outcome) for outcome in outcomes if outcome.data == name]
        parts.append(f"**{name}**\n\n{table(HEADER, rows)}")
    return "\n\n".join(parts)
