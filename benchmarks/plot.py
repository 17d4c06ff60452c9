"""One bar chart a topic, as SVG: for each case the library and its peers, by their time relative to the best peer."""

from xml.sax.saxutils import escape

ROW = 15
GAP = 14
LABEL = 190
BARS = 560
WIDTH = LABEL + BARS + 190
TOP = 64
LONGEST = 4.0  # bars beyond so many times the best peer are cut

COLORS = {"vyx": "#1f6feb", "limit": "#8b949e"}
PEER_COLOR = "#d0d7de"
BEST_COLOR = "#f0a35e"
TEXT_COLOR = "#24292f"


def readable(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def text(x, y, content, size=11, anchor="start", weight="normal"):
    return (f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" text-anchor="{anchor}" font-weight="{weight}" '
            f'fill="{TEXT_COLOR}">{escape(content)}</text>')


def color_of(peer, row):
    return COLORS.get(peer, BEST_COLOR if peer == row.get("best_peer") else PEER_COLOR)


def bar(peer, time, base, row, y):
    ratio = time / base
    width = BARS * min(ratio, LONGEST) / LONGEST
    note = " (other result)" if peer in row["different_result"] else ""
    cut = " \u2026" if ratio > LONGEST else ""
    return [
        text(LABEL - 8, y + ROW - 4, peer, 11, "end", "bold" if peer == "vyx" else "normal"),
        f'<rect x="{LABEL}" y="{y + 2}" width="{max(width, 1):.1f}" height="{ROW - 4}" rx="2" '
        f'fill="{color_of(peer, row)}"/>',
        text(LABEL + width + 6, y + ROW - 4, f"{readable(time)}  {ratio:.2f}{cut}{note}", 10),
    ]


def case_parts(row, y):
    base = row.get("best_peer_ns", row["ours_ns"])
    parts = [text(12, y + 12, row["case"], 12, weight="bold")]
    y += 18
    for peer, time in sorted(row["all_ns"].items(), key=lambda item: item[1]):
        parts += bar(peer, time, base, row, y)
        y += ROW
    return parts, y + GAP


def write(path, topic, rows):
    parts = []
    y = TOP
    for row in rows:
        added, y = case_parts(row, y)
        parts += added
    one = LABEL + BARS / LONGEST
    head = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {y}" width="{WIDTH}" height="{y}" '
        'font-family="DejaVu Sans, Verdana, sans-serif">',
        f'<rect width="{WIDTH}" height="{y}" fill="#ffffff"/>',
        text(12, 26, topic, 18, weight="bold"),
        text(12, 46, "time relative to the best peer (orange, line at 1.00); shorter is better; vyx is this library"),
        f'<line x1="{one}" y1="{TOP - 6}" x2="{one}" y2="{y - GAP}" stroke="{BEST_COLOR}" stroke-dasharray="3 3"/>',
    ]
    path.write_text("\n".join(head + parts + ["</svg>", ""]), encoding="utf-8")
