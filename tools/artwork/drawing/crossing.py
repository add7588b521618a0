"""Where two segments cross."""
from geometry import Line, box_of, cross


def crossings(first, second, tolerance=1e-9):
    """Pairs (s, t) with first.at(s) == second.at(t), in the order of s. Touching ends of neighbors count."""
    found = []
    search(first, 0.0, 1.0, second, 0.0, 1.0, found, 0)
    result = []
    for s, t in sorted(found):
        s, t = polish(first, second, s, t)
        if not (-1e-7 <= s <= 1 + 1e-7 and -1e-7 <= t <= 1 + 1e-7):
            continue
        if abs(first.at(s) - second.at(t)) > 1e-6:
            continue
        s, t = min(1.0, max(0.0, s)), min(1.0, max(0.0, t))
        if all(abs(first.at(s) - first.at(other)) > 1e-5 for other, _ in result):
            result.append((s, t))
    return result


def control_box(segment):
    return box_of(segment.points())


def flat(segment):
    if isinstance(segment, Line):
        return True
    a, b, c, d = segment.points()
    chord = abs(d - a)
    if chord < 1e-9:
        return max(abs(b - a), abs(c - a)) < 1e-4
    return max(abs(cross(d - a, b - a)), abs(cross(d - a, c - a))) / chord < 1e-3


def search(first, s0, s1, second, t0, t1, found, depth):
    a, b = control_box(first), control_box(second)
    slack = 1e-6
    if a[1] < b[0] - slack or b[1] < a[0] - slack or a[3] < b[2] - slack or b[3] < a[2] - slack:
        return
    if flat(first) and flat(second) or depth > 40:
        da, db = first.end - first.start, second.end - second.start
        det = cross(da, db)
        if abs(det) < 1e-14:
            return
        gap = second.start - first.start
        u, v = cross(gap, db) / det, cross(gap, da) / det
        loose = 0.02
        if -loose <= u <= 1 + loose and -loose <= v <= 1 + loose:
            found.append((s0 + (s1 - s0) * u, t0 + (t1 - t0) * v))
        return
    if not flat(first) and (flat(second) or first.length() >= second.length()):
        head, tail = first.split(0.5)
        middle = (s0 + s1) / 2
        search(head, s0, middle, second, t0, t1, found, depth + 1)
        search(tail, middle, s1, second, t0, t1, found, depth + 1)
    else:
        head, tail = second.split(0.5)
        middle = (t0 + t1) / 2
        search(first, s0, s1, head, t0, middle, found, depth + 1)
        search(first, s0, s1, tail, middle, t1, found, depth + 1)


def polish(first, second, s, t):
    for _ in range(12):
        gap = first.at(s) - second.at(t)
        va, vb = first.velocity(s), second.velocity(t)
        det = -cross(va, vb)
        if abs(gap) < 1e-13 or abs(det) < 1e-12:
            break
        s, t = s + cross(gap, vb) / det, t + cross(gap, va) / det
    return s, t
