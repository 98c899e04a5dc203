#!/usr/bin/env python3
"""check_reports.py [--update] FOLDER PROGRAM...: runs kelmo-lang lint in every format, and with options for its status.

FOLDER/files has faulty files; FOLDER/report.* are the expected reports, which --update writes. The program runs in a copy
of the files, below a folder whose name has a blank and Cyrillic letters. The structure of SARIF is checked against what
its standard demands, and JSON against what its readers rely on. Every rule needs its texts.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time

try:
    import fcntl
    import resource
except ImportError:  # on Windows
    fcntl = None

import captured
import golden

FORMATS = {"text": "report.txt", "json": "report.json", "sarif": "report.sarif", "github": "report.github"}
PROJECT = "kelmo-lang.json"

# Options of lint, the project file (or None), the exit status, and a part of the output or of the errors.
STATUSES = [
    (["LANG"], None, 1, "2 errors in 3 files"),
    (["LANG/de 1.txt", "--fail-on", "never"], None, 0, ""),
    (["LANG/en.txt", "--base", "LANG/en.txt"], None, 0, "no findings in 1 file"),
    (["LANG/en.txt", "--fail-on", "note"], None, 0, "not run, because there is no base (--base): "),
    (["LANG/de 1.txt", "--base", "LANG/en.txt", "--rule", "duplicate-key=off"], None, 0, "warning: key "),
    (["LANG/de 1.txt", "--base", "LANG/en.txt", "--rule", "duplicate-key=off", "--release"], None, 1, "error: key "),
    (["LANG/de 1.txt", "--base", "LANG/en.txt", "--rule", "duplicate-key=note", "--fail-on", "warning"], None, 1, "note: "),
    (["LANG/de 1.txt", "--rule", "duplicate-key=note", "--fail-on", "note"], None, 1, "1 note in"),
    (["LANG/de 1.txt", "--rule", "duplicate=note"], None, 2, '--rule needs the name of a rule'),
    (["LANG/de 1.txt", "--format", "xml"], None, 2, "--format cannot be"),
    (["LANG/none.txt"], None, 2, "kelmo-lang: error: LANG/none.txt: "),
    ([""], None, 2, 'kelmo-lang: error: "": does not exist'),
    (["EMPTY"], None, 2, "kelmo-lang: error: EMPTY: "),
    (["LANG/de 1.txt"], "{}", 1, "1 error"),
    (["LANG"], "{\n  \"bse\": 1\n}", 2, 'kelmo-lang: error: kelmo-lang.json:2:3: unknown name "bse"\n'),
    (["LANG/de 1.txt"], '{"levels": {"duplicate-key": "note"}}', 0, "1 note in"),
    (["LANG/de 1.txt"], '{"levels": {"duplicate-key": "note"}, "failOn": "note"}', 1, "1 note in"),
    (["LANG/de 1.txt"], '{"base": "LANG/en.txt"}', 1, 'key "menu.save" is missing'),
    (["LANG/de 1.txt"],
     '{"ignored": [{"file": "LANG/de*", "key": "msg.*", "rule": "duplicate-key", "reason": "r"}]}', 0, "no findings in 1"),
]


def run(program, folder, arguments):
    done = captured.run([*program, *arguments], cwd=folder)
    return done.returncode, done.stdout.decode("utf-8"), done.stderr.decode("utf-8")


def without_rules(report):
    """The report of SARIF without the rules, whose texts change more often than the format."""
    return re.sub(r'"rules":\[.*\]', '"rules":[]', report)


def need(condition, complaint):
    if not condition:
        yield complaint


def sarif_problems(report):
    """What SARIF 2.1.0 demands of the properties that the report uses."""
    top = json.loads(report)
    yield from need(top.get("version") == "2.1.0" and isinstance(top.get("runs"), list), "version or runs")
    yield from need(set(top) <= {"$schema", "version", "runs"}, "a property of the log that SARIF does not know")
    for one in top["runs"]:
        yield from need(set(one) <= {"tool", "columnKind", "results"}, "a property of a run")
        yield from need(one.get("columnKind") in ("utf16CodeUnits", "unicodeCodePoints"), "columnKind")
        driver = one["tool"]["driver"]
        yield from need(isinstance(driver.get("name"), str) and driver["name"], "the name of the tool")
        rules = [rule["id"] for rule in driver["rules"]]
        yield from need(len(set(rules)) == len(rules), "rules that are there twice")
        for rule in driver["rules"]:
            texts = [rule["shortDescription"]["text"], rule["help"]["text"]]
            yield from need(not any(text == "" or f"rule.{rule['id']}" in text for text in texts), f"no text of {rule['id']}")
            level = rule["defaultConfiguration"]["level"]
            yield from need(level in ("none", "note", "warning", "error"), f"level {level}")
        fingerprints = set()
        for result in one["results"]:
            yield from need(rules[result["ruleIndex"]] == result["ruleId"], "ruleIndex")
            yield from need(result["level"] in ("none", "note", "warning", "error"), "the level of a result")
            yield from need(result["message"]["text"], "a result without a message")
            fingerprints.add(result["partialFingerprints"]["kelmoLang/v1"])
            for location in result["locations"] + result.get("relatedLocations", []):
                place = location["physicalLocation"]
                uri = place["artifactLocation"]["uri"]
                yield from need(re.fullmatch(r"([A-Za-z0-9._~/-]|%[0-9A-F]{2})+", uri), f"the relative URI {uri}")
                region = place.get("region", {"startLine": 1, "startColumn": 1, "endColumn": 1})
                yield from need(region["startLine"] >= 1 and region["startColumn"] >= 1, "a region begins at 0")
                yield from need(region["endColumn"] >= region["startColumn"], "a region ends before its start")
        yield from need(len(fingerprints) == len(one["results"]), "results with the same fingerprint")


def json_problems(report):
    top = json.loads(report)
    yield from need(list(top) == ["version", "base", "files", "summary", "findings"], f"members {list(top)}")
    wanted = ["file", "line", "column", "severity", "rule", "id", "key", "message", "mend", "related"]
    for finding in top["findings"]:
        yield from need(set(wanted) <= set(finding), f"{set(wanted) - set(finding)} is missing")
        yield from need("\\" not in finding["file"], "a backslash in the name of a file")
    counts = top["summary"]
    total = counts["errors"] + counts["warnings"] + counts["notes"]
    yield from need(total == len(top["findings"]) + counts["notListed"], "the summary does not add up")


def format_problems(top, folder, program, is_update):
    for name, expected in FORMATS.items():
        status, report, errors = run(program, folder, ["lint", "LANG", "--base", "LANG/en.txt", "--format", name])
        yield from need(status == 1 and not errors, f"{name}: status {status}, {errors}")
        checks = {"sarif": sarif_problems, "json": json_problems}
        yield from (f"{name}: {problem}" for problem in checks.get(name, lambda _: [])(report))
        if is_update:
            (top / expected).write_text(without_rules(report), "utf-8")
        yield from need(without_rules(report) == (top / expected).read_text("utf-8"), f"{name}: not as in {expected}:\n{report}")


def status_problems(folder, program):
    for arguments, project, wanted, part in STATUSES:
        if project is not None:
            (folder / PROJECT).write_text(project, "utf-8")
        status, report, errors = run(program, folder, ["lint", *arguments])
        yield from need(status == wanted and part in report + errors,
                        f"{arguments} {project}: status {status} and not {wanted}, or no {part!r} in\n{report}{errors}")
        (folder / PROJECT).unlink(missing_ok=True)


def baseline_and_ignore_problems(folder, program):
    faulty = ["lint", "LANG/de 1.txt", "--base", "LANG/en.txt"]
    known = [*faulty, "--baseline", "known.json"]
    status, report, errors = run(program, folder, known)
    yield from need((status, report) == (0, "") and "accepted in known.json" in errors, f"new baseline: {report}{errors}")
    status, report, _ = run(program, folder, known)
    yield from need(status == 0 and "no findings" in report, f"baseline: {report}")
    file = folder / "LANG/de 1.txt"
    before = file.read_bytes()
    file.write_bytes(before.replace(b"\n", b"\nmsg.new\tText\n", 1) + b"msg.saved\tAnders\n")  # the lines move
    status, report, _ = run(program, folder, known)
    yield from need(status == 1 and '"msg.saved"' in report and '"msg.left"' not in report, f"a new finding: {report}")
    file.write_bytes(before)
    (folder / "known.json").write_text('{"version": 9}', "utf-8")
    status, _, errors = run(program, folder, known)
    yield from need(status == 2 and "known.json: this is no baseline" in errors, f"no baseline: {errors}")

    inside = ["lint", "LANG/de 1.txt"]
    for name, made in (("../made.json", False), ("LANG/made.json", True)):
        (folder / PROJECT).write_text(json.dumps({"baseline": name}), "utf-8")
        status, _, errors = run(program, folder, inside)
        yield from need((folder / name).exists() == made and status == (0 if made else 2), f"baseline {name}: {errors}")
        (folder / name).unlink(missing_ok=True)
    (folder / PROJECT).unlink()
    for deep in ('{"version":' + 100_000 * "[" + 100_000 * "]" + "}", 100_000 * "["):
        (folder / "known.json").write_text(deep, "utf-8")
        status, _, errors = run(program, folder, known)
        yield from need(status == 2 and "known.json: this is no baseline" in errors, f"a deep baseline: status {status} {errors}")

    ignore = ["ignore", "LANG/de 1.txt", "msg.left", "duplicate-key", "--reason", "r"]
    (folder / PROJECT).write_text('{ "failOn": "error" }', "utf-8")
    status, report, errors = run(program, folder, ignore)
    yield from need(status == 0 and PROJECT in report, f"ignore: {report}{errors}")
    yield from need('{ "failOn": "error",' in (folder / PROJECT).read_text("utf-8"), "ignore has changed the rest")
    status, report, _ = run(program, folder, faulty)
    yield from need(status == 0 and "duplicate-key" not in report, f"not ignored: {report}")
    inside = folder / "LANG"
    shutil.copy(folder / PROJECT, inside / PROJECT)
    for key in ("bare.1", "bare.2"):  # a file of the current folder, without a folder in front of its name
        run(program, inside, ["ignore", "de 1.txt", key, "tag", "--reason", "r"])
    left = (inside / PROJECT).read_text("utf-8")
    yield from need(all(f'"{kept}"' in left for kept in ("failOn", "msg.left", "bare.1", "bare.2")), f"ignore has lost: {left}")
    (inside / PROJECT).write_text('{"base": "en.txt"}', "utf-8")
    report = run(program, inside, ["lint", "de 1.txt"])[1]
    yield from need('key "menu.save" is missing' in report, f"the project file of a bare name: {report}")
    (inside / PROJECT).unlink()
    for wrong in (["ignore", "LANG/de 1.txt", "k", "no-rule", "--reason", "r"], ["ignore", "LANG/no.txt", "k", "tag", "--reason", "r"],
                  ["ignore", "LANG/de 1.txt", "k", "tag"], ["rules", "no-rule"]):
        yield from need(run(program, folder, wrong)[0] == 2, f"{wrong} is taken")


def system_problems(folder, program):
    """What only POSIX systems do: output that cannot be written or must wait, folders without permission, a file that
    another program writes while it is mended."""
    files = [*program, "--lang", "en", "lint", "LANG", "--format", "sarif"]
    whole = captured.run(files, cwd=folder).stdout
    with open("/dev/full", "wb") as full:
        done = subprocess.run(files, cwd=folder, stdout=full, stderr=subprocess.PIPE, check=False)
    yield from need((done.returncode, done.stderr) == (2, b"kelmo-lang: error: the output cannot be written\n"),
                    f"a full disk: {done}")

    reading, writing = os.pipe()
    os.set_blocking(writing, False)
    fcntl.fcntl(writing, fcntl.F_SETPIPE_SZ, 4096)  # far less than the report
    with subprocess.Popen(files, cwd=folder, stdout=writing) as process:
        os.close(writing)
        time.sleep(0.5)
        with open(reading, "rb") as pipe:
            slowly = pipe.read()
    yield from need((slowly, process.returncode) == (whole, 1), f"a full pipe: {len(slowly)} of {len(whole)} bytes, {process.returncode}")

    faulty = folder / "faulty.txt"
    faulty.write_bytes(b"fr\n" + 1000 * b"key t\xE9xt\n")
    before = faulty.read_bytes()
    done = subprocess.run([*program, "--lang", "en", "fix", "--from", "windows-1252", faulty.name], cwd=folder, check=False, stderr=subprocess.PIPE,
                          preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000)))
    yield from need(done.returncode == 2 and b"cannot be written, and is unchanged" in done.stderr and faulty.read_bytes() == before
                    and not list(folder.glob(".kelmo*")), f"a file that must not grow: {done}")
    os.truncate(faulty, 0)
    try:
        os.truncate(faulty, 2**63 - 1)
    except OSError:
        pass  # not with this file system
    else:
        yield from need(run(program, folder, ["lint", faulty.name])[2] == "kelmo-lang: not enough memory\n", "a file of 8 EB")
    faulty.unlink()

    closed = folder / "CLOSED"
    closed.mkdir(0)
    if not os.access(closed, os.R_OK):  # root reads everything
        status, _, errors = run(program, folder, ["lint", "CLOSED"])
        yield from need(status == 2 and "CLOSED: cannot be read" in errors, f"a closed folder: {errors}")
    closed.rmdir()

    large = folder / "large.txt"
    for wait in (0.05, 0.2, 0.4, 0.8):  # before the file is read, after it, after it is written
        large.write_bytes(b"fr\n" + b"".join(b"key.%d\tt\xE9xt\n" % number for number in range(100_000)))
        with subprocess.Popen([*program, "fix", "--from", "windows-1252", large.name], cwd=folder, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL):
            time.sleep(wait)
            with large.open("ab") as file:
                file.write(b"key.new\ttext\n")
        yield from need(large.read_bytes().endswith(b"key.new\ttext\n"), f"a line that was added after {wait} s is lost")
    large.unlink()


def problems(top, program, is_update):
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch) / "мой проект"
        shutil.copytree(top / "files", folder / "LANG")
        (folder / "EMPTY").mkdir()
        (folder / ".git").mkdir()  # no project file above is taken
        yield from format_problems(top, folder, program, is_update)
        yield from status_problems(folder, program)
        yield from baseline_and_ignore_problems(folder, program)
        if fcntl is not None and not program[-1].endswith(".exe"):
            yield from system_problems(folder, program)


if __name__ == "__main__":
    golden.main(problems)
