#!/usr/bin/env python3
"""Converts the postal directory of the npm package jquery-jpostal-ja (MIT licence; Japan Post's
directory as JSON files per three-digit prefix) into Japan Post's utf_ken_all.csv form, compressed
the way Qt's qUncompress reads it (a 4-byte big-endian length, then a zlib stream).

    npm pack jquery-jpostal-ja && tar xzf jquery-jpostal-ja-*.tgz
    tools/postal/convert_jpostal.py package/json postal/utf_ken_all.csv.qz

Only the residential codes are kept (rows without an office name), as in KEN_ALL.CSV."""
import glob
import json
import os
import struct
import sys
import zlib


def rows(folder):
    for path in sorted(glob.glob(os.path.join(folder, "*.json"))):
        text = open(path, encoding="utf-8").read()
        yield from json.loads(text[text.index("(") + 1:text.rindex(")")])


def csv_field(value):
    return '"' + value.replace('"', '""') + '"'


def main(folder, target):
    lines = []
    for code, todo, city, town, street, office, kana_todo, kana_city, kana_town in rows(folder):
        zip7 = code.lstrip("_")
        if office or street or not (len(zip7) == 7 and zip7.isdigit() and todo):
            continue
        fields = ["00000", csv_field(zip7[:5]), csv_field(zip7), csv_field(kana_todo),
                  csv_field(kana_city), csv_field(kana_town), csv_field(todo), csv_field(city),
                  csv_field(town), "0", "0", "0", "0", "0", "0"]
        lines.append(",".join(fields))
    data = ("\r\n".join(lines) + "\r\n").encode("utf-8")
    with open(target, "wb") as out:
        out.write(struct.pack(">I", len(data)) + zlib.compress(data, 9))
    print(f"{len(lines)} rows, {len(data)} bytes -> {os.path.getsize(target)} bytes")


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
