"""Documents that are made to harm: each ends quickly with a settled exit code, and none reaches another file."""
import socket
import unittest

from tool_case import FLAT, WALL, ToolTest

CANARY = "canary-of-another-file"


class HostileXml(ToolTest):
    def assert_settled(self, content):
        """The exit code is one of the documented ones; an error is one line."""
        self.file("a.xml", content)
        result = self.run_tool("info", "a.xml", "--max-memory", "100M")
        self.assertIn(result.returncode, (0, 2))
        if result.returncode != 0:
            self.assert_one_error_line(result, 2)
        self.assertNotIn(CANARY, (result.stdout + result.stderr).decode())
        return result

    def assert_refused(self, content, message):
        result = self.assert_settled(content)
        self.assertRegex(result.stderr.decode(), message)

    def test_doctypes_with_entities_and_other_files(self):
        canary = self.file("canary.xml", CANARY).as_uri()
        with socket.create_server(("127.0.0.1", 0)) as server:
            url = f"http://127.0.0.1:{server.getsockname()[1]}/a.dtd"
            laughs = "".join(f'<!ENTITY l{i + 1} "{("&l%d;" % i) * 10}">' for i in range(9))
            for doctype in (f'<!DOCTYPE a SYSTEM "{canary}">', f'<!DOCTYPE a SYSTEM "{url}">', '<!DOCTYPE a PUBLIC "x" "canary.xml">',
                            f'<!DOCTYPE a [<!ENTITY e SYSTEM "{canary}">]>', f'<!DOCTYPE a [<!ENTITY e SYSTEM "{url}">]>',
                            f'<!DOCTYPE a [<!ENTITY % p SYSTEM "{url}"> %p;]>', f'<!DOCTYPE a [<!ENTITY l0 "ha">{laughs}]>',
                            f'<!DOCTYPE a [<!ENTITY e "{"x" * 100000}">]>'):
                with self.subTest(doctype[:60]):
                    self.assert_refused(f"{doctype}<a>&e;&l9;{FLAT.format(4, 3)}</a>", "found a DOCTYPE")
            for other in (f'<a xmlns:xi="http://www.w3.org/2001/XInclude"><xi:include href="{canary}" parse="text"/>{FLAT.format(4, 3)}</a>',
                          f'<a xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="x {url}" '
                          f'xsi:noNamespaceSchemaLocation="{url}">{FLAT.format(4, 3)}</a>',
                          f'<?xml-stylesheet href="{url}"?>' + FLAT.format(4, 3), f'<?xml-model href="{url}"?>' + FLAT.format(4, 3)):
                with self.subTest(other[:60]):
                    self.assertEqual(self.assert_settled(other).returncode, 0)
            server.setblocking(False)
            with self.assertRaises(BlockingIOError):  # no client has connected
                server.accept()

    def test_depth(self):
        for levels in (65, 1000, 1000000):
            self.assert_refused("<a>" * levels, "nested more than 64 deep")
            self.assert_refused("<a>" * levels + FLAT.format(4, 3) + "</a>" * levels, "nested more than 64 deep")
        self.assertEqual(self.assert_settled(f"<a>{FLAT.format('<b>' * 61 + '4' + '</b>' * 61, 3)}</a>").returncode, 0)
        self.assert_refused(f"<a>{FLAT.format('<b>' * 62 + '4' + '</b>' * 62, 3)}</a>", "nested more than 64 deep")

    def test_floods(self):
        attributes = " ".join(f'a{i}="{i}"' for i in range(70000))
        self.assert_refused(f"<a {attributes}>{FLAT.format(4, 3)}</a>", "more than 10000 attributes")
        self.assert_refused("<a>" + "".join(f"<b{i}/>" for i in range(20000)) + "</a>", "more than 10000 different names")
        self.assert_refused("<a>" + "".join(f'<b c{i}=""/>' for i in range(20000)) + "</a>", "more than 10000 different names")
        self.assert_refused("<a>" + "<b/>" * 1000000 + FLAT.format(4, 3) + "</a>", "more than 100.0 MiB of memory")
        self.assert_refused("<a>" + " " * 10000000 + "</a>", "more than 100.0 MiB of memory")
        self.assertEqual(self.assert_settled("<a>" + "<b/>" * 100000 + FLAT.format(4, 3) + "</a>").returncode, 0)
        self.assertEqual(self.assert_settled("<a>" + " " * 5000000 + FLAT.format(4, 3) + "</a>").returncode, 0)
        few = " ".join(f'a{i}="{i}"' for i in range(9000))
        self.assertEqual(self.assert_settled(f"<a {few}>{FLAT.format(4, 3)}</a>").returncode, 0)

    def test_attributes_in_an_encoding_without_ascii(self):
        attributes = " ".join(f'a{i}="{i}"' for i in range(12000))
        self.assert_refused(f'<?xml version="1.0" encoding="IBM037"?><a {attributes}/>'.encode("cp037"), "more than 10000 different names")

    def test_every_truncation_of_the_sample(self):
        with open(WALL, "rb") as file:
            sample = file.read()
        whole = sample.rstrip()
        for length in range(len(whole)):
            self.file("a.xml", sample[:length])
            self.assert_one_error_line(self.run_tool("info", "a.xml"), 2)
        self.assertEqual(self.assert_settled(whole).returncode, 0)

    def test_every_byte_of_the_sample_replaced(self):
        with open(WALL, "rb") as file:
            sample = file.read()
        for position in range(0, len(sample), 3):
            for byte in (0x00, 0xFF, 0x3C):
                self.assert_settled(sample[:position] + bytes([byte]) + sample[position + 1:])

    def test_encodings(self):
        screen = '<?xml version="1.0"{}?><Haus Name="\u00e4\u20ac\U0001f3e0">' + FLAT.format(4, 3) + "</Haus>"
        for encoding in ("utf-8", "utf-8-sig", "utf-16", "utf-16-le", "utf-16-be", "utf-32"):
            with self.subTest(encoding):
                self.assert_settled(screen.format("").encode(encoding))
        for encoding in ("utf-8", "utf-8-sig", "utf-16"):
            self.assertEqual(self.assert_settled(screen.format("").encode(encoding)).returncode, 0)
        for ignored in ("UTF-16", "UTF-32"):
            self.assert_settled(screen.format(f' encoding="{ignored}"').encode())
        for declared in ("EBCDIC-CP-US", "IBM037", "no-such-encoding", "../../etc/passwd", "x" * 10000, ""):
            with self.subTest(declared):
                self.assert_refused(screen.format(f' encoding="{declared}"').encode(), "error: a.xml")
        latin = '<?xml version="1.0" encoding="{}"?><Haus Name="\u00e4">' + FLAT.format(4, 3) + "</Haus>"
        self.assertEqual(self.assert_settled(latin.format("ISO-8859-1").encode("latin-1")).returncode, 0)
        self.assert_refused(latin.format("US-ASCII").encode("latin-1"), "error: a.xml")

    def test_bytes_that_are_no_characters(self):
        for wrong in (b"\xff", b"\xc0\x80", b"\xe0\x80\xaf", b"\xed\xa0\x80", b"\xf4\x90\x80\x80", b"\xe2\x82", b"\x00", b"\x1b", b"\xef\xbf\xbe",
                      b"]]>", b"&#0;", b"&#xD800;", b"&#x110000;", b"&#99999999999999999999;", b"&amp", b"& ", b"<", b"<!", b"<!--", b"<![CDATA["):
            with self.subTest(wrong):
                self.assert_refused(b"<a>" + wrong + FLAT.format(4, 3).encode() + b"</a>", "error: a.xml")
        self.assert_refused(f'<a b="<">{FLAT.format(4, 3)}</a>', "not well-formed")
        self.assert_refused(f'<a b="1" b="2">{FLAT.format(4, 3)}</a>', "not well-formed")


if __name__ == "__main__":
    unittest.main()
