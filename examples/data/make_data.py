#!/usr/bin/env python3
"""Makes the order in the other encodings from order-utf8.xml, which is written by hand, and as
order.xml with a document type: with the external subset order.dtd, and with three of its parts in
files of other encodings.

Run without arguments it writes the files; with --check it only tells whether they are up to date.
Line ends are those of the systems that such files come from: CR LF in Shift_JIS and in
little-endian UTF-16 with a byte order mark, LF in the rest.
"""
import pathlib
import sys

FOLDER = pathlib.Path(__file__).resolve().parent
MASTER = FOLDER / "order-utf8.xml"


def japanese(character, single, double):
    """One character by way of Shift_JIS: single(byte) for a byte that stands alone, else
    double(first, second) with the two 7-bit bytes of the JIS code."""
    code = character.encode("cp932")
    if len(code) == 1:
        return single(code[0])
    lead, trail = code
    row = (lead - (0x81 if lead < 0xA0 else 0xC1)) * 2
    cell = trail - 0x40 - (trail > 0x7F)
    if cell >= 94:
        row, cell = row + 1, cell - 94
    if row >= 94:
        raise ValueError(f"{character} is not in JIS X 0208")
    return double(row + 0x21, cell + 0x21)


def shift_jis(text):
    return text.encode("cp932")


def euc_jp(text):
    # Half-width kana have the byte 0x8E in front, all else from 0x80 up has both high bits set.
    return b"".join(
        japanese(
            character,
            lambda byte: bytes([byte]) if byte < 0x80 else bytes([0x8E, byte]),
            lambda first, second: bytes([first | 0x80, second | 0x80]),
        )
        for character in text
    )


def iso_2022_jp(text):
    # ESC $ B opens a run of kanji and ESC ( J closes it. ASCII, the ends of lines and half-width
    # kana, which are single bytes here, stand outside of such runs.
    result = bytearray()
    in_kanji = False
    for character in text + "\n":
        code = japanese(character, lambda byte: bytes([byte]), lambda *pair: bytes(pair))
        if in_kanji != (len(code) == 2):
            in_kanji = not in_kanji
            result += b"\x1b$B" if in_kanji else b"\x1b(J"
        result += code
    return bytes(result[:-1])


def utf_16(byte_order, mark=b""):
    return lambda text: mark + text.encode("utf-16-" + byte_order)


# File, name of the encoding in the XML declaration, end of line, encoder.
FILES = [
    ("order-utf16le-bom.xml", "UTF-16", "\r\n", utf_16("le", b"\xff\xfe")),
    ("order-utf16be-bom.xml", "UTF-16", "\n", utf_16("be", b"\xfe\xff")),
    ("order-utf16le.xml", "UTF-16", "\n", utf_16("le")),
    ("order-utf16be.xml", "UTF-16", "\n", utf_16("be")),
    ("order-sjis.xml", "Shift_JIS", "\r\n", shift_jis),
    ("order-eucjp.xml", "EUC-JP", "\n", euc_jp),
    ("order-iso2022jp.xml", "ISO-2022-JP", "\n", iso_2022_jp),
]

# What follows makes order.xml. Its files are named without a folder, since file names count from the
# working directory. Its content is that of order-utf8.xml: what the document type supplies is taken
# out of the text here.

DOCTYPE = """\
<!DOCTYPE 注文書 SYSTEM "order.dtd" [
  <!-- 部品は旧システムの文字コードのまま -->
  <!ENTITY 得意先 SYSTEM "order-customer.ent">
  <!ENTITY 納品先 SYSTEM "order-delivery.ent">
  <!ENTITY 明細 SYSTEM "order-lines.ent">
  <!ENTITY 発注元 "花園精密工業（株）">
  <!ATTLIST 単価 通貨 NMTOKEN #FIXED "JPY">
]>
"""

SUBSET = """\
<?xml version="1.0" encoding="Shift_JIS"?>
<!-- 注文書の文書型（表示用の予定表は含まない） -->
<!ENTITY % 文字 "(#PCDATA)">
<!ENTITY % フリガナ属性 "フリガナ CDATA #IMPLIED">
<!ENTITY % 住所属性 '郵便番号 NMTOKEN #REQUIRED'>
<!ENTITY 通称 "&#xFF22;棟">

<!ELEMENT 注文書 (発注日, 希望納期, 得意先, 納品先, 明細, 合計, 備考?, 通知*)>
<!ATTLIST 注文書 番号 ID #REQUIRED 区分 (通常 | 至急 | 見積) "通常" 言語 NMTOKEN "ja">
<!ELEMENT 発注日 %文字;>
<!ATTLIST 発注日 曜日 (日 | 月 | 火 | 水 | 木 | 金 | 土) #IMPLIED>
<!ELEMENT 希望納期 %文字;>
<!ELEMENT 得意先 (会社名, 担当者+, 住所, (電話 | メール)*)>
<!ELEMENT 会社名 %文字;>
<!ATTLIST 会社名 %フリガナ属性;>
<!ELEMENT 担当者 %文字;>
<!ATTLIST 担当者 %フリガナ属性; 副 CDATA #IMPLIED>
<!ELEMENT 住所 %文字;>
<!ATTLIST 住所 %住所属性;>
<!ELEMENT 明細 (行)*>
<!ATTLIST 行 番号 NMTOKEN #REQUIRED 見積 CDATA #IMPLIED>
<!ELEMENT 備考 (#PCDATA)>
<!ELEMENT 通知 ANY>

<!NOTATION 画像 PUBLIC "-//EXAMPLE//NOTATION PNG//JA" "image/png">
<!ENTITY 社印 SYSTEM "seal.png" NDATA 画像>
"""

# File, element that it holds, name of the encoding, end of line, encoder.
PARTS = [
    ("order-customer.ent", "得意先", "ISO-2022-JP", "\n", iso_2022_jp),
    ("order-delivery.ent", "d:納品先", "UTF-16", "\r\n", utf_16("le", b"\xff\xfe")),
    ("order-lines.ent", "明細", "EUC-JP", "\n", euc_jp),
]

# Text of the master, and what stands for it in order.xml and its parts.
SUPPLIED = [
    (' 言語="ja"', ""),
    (' 通貨="JPY"', ""),
    (">花園精密工業（株）<", ">&発注元;<"),
    ("Ｂ棟", "&通称;"),
]


def replaced(text, old, new):
    if old not in text:
        sys.exit(f"{MASTER.name}: no {old}")
    return text.replace(old, new)


def files_with_document_type(text):
    for old, new in SUPPLIED:
        text = replaced(text, old, new)
    yield "order.dtd", shift_jis(SUBSET.replace("\n", "\r\n"))
    for name, element, encoding, line_end, encode in PARTS:
        # The line in front and the end of the last line go along.
        begin = text.index(f"\n  <{element} ")
        end = text.index(f"</{element}>\n") + len(f"</{element}>\n")
        part = f'<?xml version="1.0" encoding="{encoding}"?>' + text[begin:end]
        yield name, encode(part.replace("\n", line_end))
        text = text[:begin] + f"&{element.split(':')[-1]};" + text[end:]
    yield "order.xml", replaced(text, "<注文書 ", DOCTYPE + "<注文書 ").encode("utf-8")


def main():
    text = MASTER.read_bytes().decode("utf-8")
    declared = 'encoding="UTF-8"'
    if text.count(declared) != 1 or "\r" in text:
        sys.exit(f"{MASTER.name}: expected one {declared} and no carriage return")

    made = []
    for name, encoding, line_end, encode in FILES:
        content = text.replace(declared, f'encoding="{encoding}"').replace("\n", line_end)
        made.append((name, encode(content)))
    made += files_with_document_type(text)

    stale = []
    for name, data in made:
        path = FOLDER / name
        if "--check" not in sys.argv[1:]:
            path.write_bytes(data)
        elif not path.exists() or path.read_bytes() != data:
            stale.append(name)
    if stale:
        sys.exit("not up to date: " + ", ".join(stale))


if __name__ == "__main__":
    main()
