#!/usr/bin/env python3
"""check_written_pages.py TOP-FOLDER PROGRAM...: what tools write into docs is up to date: the page about the rules of
kelmo-lang, and the picture of what it prints."""

import pathlib
import subprocess
import sys


def main():
    top, program = pathlib.Path(sys.argv[1]), sys.argv[2:]
    written = (
        ("docs/rules.md", "tools/rules_page.py . > docs/rules.md", [top / "tools/rules_page.py", top]),
        ("docs/checker.svg", "tools/terminal_picture.py 'kelmo-lang lint examples/LANG/faulty.txt' PROGRAM lint "
         "examples/LANG/faulty.txt --color always > docs/checker.svg",
         [top / "tools/terminal_picture.py", "kelmo-lang lint examples/LANG/faulty.txt", *program, "--lang", "en", "lint",
          "examples/LANG/faulty.txt", "--color", "always"]),
    )
    failed = False
    for name, command, arguments in written:
        run = subprocess.run([sys.executable, *map(str, arguments)], cwd=top, capture_output=True, check=False)
        if run.returncode != 0 or run.stdout != (top / name).read_bytes():
            print(f"{name} is not what its tool writes: {command}\n{run.stderr.decode('utf-8', 'replace')}")
            failed = True
    sys.exit(failed)


if __name__ == "__main__":
    main()
