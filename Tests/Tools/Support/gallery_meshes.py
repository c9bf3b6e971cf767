"""The meshes of the gallery: python3 gallery_meshes.py FOLDER writes them."""
import math
import pathlib
import sys

# Name of a picture with the options that draw it.
PICTURES = {"mesh-dome": ["--color", "stretch"], "mesh-defects": []}


def text_of(positions, uvs, faces):
    lines = [f"v {x:.6f} {y:.6f} {z:.6f}" for x, y, z in positions] + [f"vt {u:.6f} {v:.6f}" for u, v in uvs] + ["vn 0 -1 0"]
    lines += ["f " + " ".join(f"{position + 1}/{uv + 1}/1" for position, uv in face) for face in faces]
    return "\n".join(lines) + "\n"


def dome(rings=20, sectors=60, radius=6.0):
    """A dome for a viewer inside, whose UV is a disk with equal rings, the front below as on a fisheye picture."""
    positions, uvs, faces = [(0.0, 0.0, radius)], [(0.5, 0.5)], []
    for ring in range(1, rings + 1):
        tilt, reach = math.pi / 2 * ring / rings, 0.5 * ring / rings
        for sector in range(sectors):
            angle = 2 * math.pi * sector / sectors
            x, y = math.sin(angle), math.cos(angle)
            positions.append((radius * math.sin(tilt) * x, radius * math.sin(tilt) * y, radius * math.cos(tilt)))
            uvs.append((0.5 + reach * x, 0.5 + reach * y))

    def index(ring, sector):
        return 0 if ring == 0 else 1 + (ring - 1) * sectors + sector % sectors

    for ring in range(rings):
        for sector in range(sectors):
            inner, outer = [index(ring, sector + k) for k in (0, 1)], [index(ring + 1, sector + k) for k in (0, 1)]
            corners = dict.fromkeys([*inner, *reversed(outer)])  # one of them is gone at the pole
            faces.append([(corner, corner) for corner in corners])
    return text_of(positions, uvs, faces)


def wall_with_defects(columns=32, rows=16, radius=4.0, angle=2.4, height=3.0):
    """A curved wall with a hole, three flipped triangles, and a patch whose UVs run from right to left."""
    positions, uvs, faces = [], [], []
    for row in range(rows + 1):
        for column in range(columns + 1):
            theta = (column / columns - 0.5) * angle
            positions.append((radius * math.sin(theta), radius * math.cos(theta), height * (0.5 - row / rows)))
            uvs.append((column / columns, row / rows))
    flipped = {(5, 3), (20, 2), (14, 13)}
    for row in range(rows):
        for column in range(columns):
            if 9 <= column < 15 and 5 <= row < 9:
                continue
            a = row * (columns + 1) + column
            b = a + columns + 1
            corners = [(a, a), (b, b), (b + 1, b + 1), (a + 1, a + 1)]
            if 22 <= column < 27 and 6 <= row < 12:
                corners = [(corner, len(uvs) + i) for i, (corner, _) in enumerate(corners)]
                uvs += [(49 / columns - uvs[corner][0], uvs[corner][1]) for corner, _ in corners]
            first = [corners[0], corners[1], corners[2]]
            faces.append(first[::-1] if (column, row) in flipped else first)
            faces.append([corners[0], corners[2], corners[3]])
    return text_of(positions, uvs, faces)


def meshes():
    return {"mesh-dome": dome(), "mesh-defects": wall_with_defects()}


if __name__ == "__main__":
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for mesh, obj in meshes().items():
        (folder / f"{mesh}.obj").write_text(obj)
