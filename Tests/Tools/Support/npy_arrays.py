"""Arrays in NumPy's file format, read and written without NumPy."""
import ast
import struct


def npy(rows, number="<f8", fortran=False, version=1, shape=None):
    """The bytes of an array of rows."""
    shape = shape or (len(rows), len(rows[0]))
    header = repr({"descr": number, "fortran_order": fortran, "shape": shape}).encode() + b"\n"
    values = [value for line in (zip(*rows) if fortran else rows) for value in line]
    kind = {"<f8": "<d", ">f8": ">d", "<f4": "<f", "<i8": "<q"}[number]
    return (b"\x93NUMPY" + bytes([version, 0]) + struct.pack("<H" if version == 1 else "<I", len(header)) + header
            + struct.pack(f"{kind[0]}{len(values)}{kind[1]}", *values))


def rows_of(content):
    """The rows of an array of float64 in C order, as lists of their bytes."""
    assert content[:8] == b"\x93NUMPY\x01\x00", content[:8]
    length, = struct.unpack("<H", content[8:10])
    assert (10 + length) % 64 == 0 and content[9 + length:10 + length] == b"\n"
    header = ast.literal_eval(content[10:10 + length].decode().strip())
    assert (header["descr"], header["fortran_order"]) == ("<f8", False) and len(header) == 3, header
    count, columns = header["shape"]
    data = content[10 + length:]
    assert len(data) == 8 * count * columns, (len(data), header)
    return [[data[8 * i:8 * i + 8] for i in range(row * columns, (row + 1) * columns)] for row in range(count)]
