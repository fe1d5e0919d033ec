"""Draws the figures of bench/table.py as SVG, readable on light and dark pages."""
import math

style = """<style>
text { font: 13px sans-serif; fill: #24292f } .axis { stroke: #8c959f; stroke-width: 1 }
.ours { stroke: #cf222e; fill: #cf222e } .peer { stroke: #57606a; fill: #57606a } .line { fill: none; stroke-width: 2 }
@media (prefers-color-scheme: dark) { text { fill: #e6edf3 } .ours { stroke: #ff7b72; fill: #ff7b72 }
.peer { stroke: #9da7b3; fill: #9da7b3 } .line { fill: none } }
</style>"""


def save(path, width, height, title, parts):
    head = (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" role="img">'
            f"<title>{title}</title>{style}")
    path.write_text("\n".join([head, *parts, "</svg>"]) + "\n")


def kind(name):
    return "ours" if name == "zep_config" else "peer"


def bars(path, title, figures):
    """figures: {parser: {line: instructions}}, one bar for each, on a logarithmic scale."""
    left, width, row = 170, 760, 18
    largest = max(max(lines.values()) for lines in figures.values())
    parts, y = [f'<text x="10" y="20">{title}</text>'], 40
    for line in next(iter(figures.values())):
        parts.append(f'<text x="10" y="{y + 12}" style="font-weight: bold">{line}</text>')
        y += row
        for name, lines in figures.items():
            length = (width - left - 110) * math.log10(lines[line] / 100) / math.log10(largest / 100)
            parts += [f'<text x="{left - 8}" y="{y + 12}" text-anchor="end">{name}</text>',
                      f'<rect class="{kind(name)}" x="{left}" y="{y + 2}" width="{length:.0f}" height="12"/>',
                      f'<text x="{left + length + 6:.0f}" y="{y + 12}">{lines[line]:,.0f}</text>']
            y += row
        y += 8
    save(path, width, y, title, parts)


def curves(path, title, figures):
    """figures: {parser: {number of flags: instructions}}, one curve for each; both scales are logarithmic."""
    left, top, width, height = 70, 40, 500, 330
    points = [(n, cost) for counts in figures.values() for n, cost in counts.items()]
    (x0, x1), (y0, y1) = [(math.log10(min(v)), math.log10(max(v))) for v in zip(*points)]

    def x(n):
        return left + width * (math.log10(n) - x0) / (x1 - x0)

    def y(cost):
        return top + height * (1 - (math.log10(cost) - y0) / (y1 - y0))

    parts = [f'<text x="10" y="20">{title}</text>']
    for power in range(math.ceil(x0), math.floor(x1) + 1):
        parts.append(f'<text x="{x(10**power):.0f}" y="{top + height + 25}" text-anchor="middle">{10**power:,}</text>')
    for power in range(math.ceil(y0), math.floor(y1) + 1):
        parts += [f'<line class="axis" x1="{left}" x2="{left + width}" y1="{y(10**power):.0f}" y2="{y(10**power):.0f}"/>',
                  f'<text x="{left - 8}" y="{y(10**power) + 4:.0f}" text-anchor="end">{10**power:,}</text>']
    below = {}  # the lowest free place for a label at the end of a curve, so that labels are kept off each other
    for name, counts in sorted(figures.items(), key=lambda one: list(one[1].values())[-1]):
        path_points = " ".join(f"{x(n):.0f},{y(cost):.0f}" for n, cost in counts.items())
        last, cost = list(counts.items())[-1]
        place = min(below.get(last, math.inf), y(cost) + 10)
        below[last] = place - 15
        weight = ' style="font-weight: bold"' if kind(name) == "ours" else ""
        parts += [f'<polyline class="line {kind(name)}" points="{path_points}"/>',
                  f'<text x="{x(last) + 8:.0f}" y="{place:.0f}"{weight}>{name}</text>']
    save(path, 760, top + height + 40, title, parts)
