#!/usr/bin/env python3
"""The releases of CHANGELOG.md for those who do not read it.

usage: changelog.py metainfo VERSION CHANGELOG.md TEMPLATE      the template with the releases in it
       changelog.py debian VERSION CHANGELOG.md MAINTAINER      Debian's changelog
What is unreleased is left out; the newest release has to be VERSION.
"""

import datetime
import re
import sys
import textwrap
from xml.sax.saxutils import escape


def releases(lines):
    """Newest first: version, date, and the groups with their entries."""
    found = []
    for line in lines:
        if match := re.match(r"## \[(\d[^\]]*)\] - (\d{4}-\d\d-\d\d)$", line):
            found.append((match[1], datetime.date.fromisoformat(match[2]), []))
        elif not found:
            continue
        elif line.startswith("### "):
            found[-1][2].append((line[4:].strip(), []))
        elif line.startswith("- "):
            found[-1][2][-1][1].append(line[2:].strip())
        elif line.startswith("  ") and line.strip():
            found[-1][2][-1][1][-1] += " " + line.strip()
    return found


def metainfo(found, template):
    lines = ["  <releases>"]
    for version, date, groups in found:
        lines += [f'    <release version="{escape(version)}" date="{date}" type="stable">', "      <description>"]
        for title, entries in groups:
            lines += [f"        <p>{escape(title)}:</p>", "        <ul>"]
            lines += ["          <li>" + re.sub("`([^`]+)`", r"<code>\1</code>", escape(entry)) + "</li>"
                      for entry in entries]
            lines.append("        </ul>")
        lines += ["      </description>", "    </release>"]
    with open(template, encoding="utf-8") as file:
        return file.read().replace("@RELEASES@", "\n".join(lines + ["  </releases>"]))


def debian(found, maintainer):
    text = ""
    for version, date, groups in found:
        text += f"zavik ({version}) stable; urgency=medium\n"
        for title, entries in groups:
            text += f"\n  [ {title} ]\n"
            for entry in entries:
                text += textwrap.fill(entry, 78, initial_indent="  * ", subsequent_indent="    ") + "\n"
        # Neither the names of the days nor of the months depend on the user's language.
        day, month = "Mon Tue Wed Thu Fri Sat Sun".split(), "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()
        text += (f"\n -- {maintainer}  {day[date.weekday()]}, {date.day:02} {month[date.month - 1]} {date.year}"
                 " 00:00:00 +0000\n\n")
    return text[:-1]


def main():
    kind, version, changelog, argument = sys.argv[1:]
    with open(changelog, encoding="utf-8") as file:
        found = releases(file)
    if not found or found[0][0] != version:
        sys.exit(f"{changelog}: the newest release is not {version}; write its section")
    sys.stdout.reconfigure(encoding="utf-8")
    sys.stdout.write({"metainfo": metainfo, "debian": debian}[kind](found, argument))


main()
