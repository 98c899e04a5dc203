"""What the tests of the checkers share: a checker accepts a folder, and refuses it once one thing in it is false.

A test provides a folder that its checker accepts, and a table. Each row falsifies one file of a fresh folder and names
the expected complaint. A checker that ends differently or with another complaint fails the test.
"""

import collections
import contextlib
import pathlib
import shutil
import subprocess
import tempfile
import unittest

TOP = pathlib.Path(__file__).resolve().parents[2]

# Replaces `old`, which must occur once in `file`, by `new`. Without `old`, `new` is the whole file. Without `new`,
# removes the file.
Row = collections.namedtuple("Row", "name file old new complaint")


def falsify(file, old, new):
    if new is None:
        file.unlink()
        return
    text = ""
    if old is not None:
        text = file.read_text("utf-8")
        if text.count(old) != 1:
            raise ValueError(f"{old!r} occurs {text.count(old)} times in {file.name}")
    written = new if old is None else text.replace(old, new)
    mode = file.stat().st_mode if file.exists() else None
    file.write_text(written, "utf-8", "surrogateescape", newline="")
    if mode:
        file.chmod(mode)


def write(folder, files):
    """`files` is {name: text}; a text that begins with "#!" is a program."""
    for name, text in files.items():
        file = folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, "utf-8", "surrogateescape", newline="")
        if text.startswith("#!"):
            file.chmod(0o755)


# What a build of the library reads.
LIBRARY = ("CMakeLists.txt", "cldr", "cmake", "dictionary", "frame", "host", "include", "phyval", "platform", "resources",
           "storage", "text", "unittables")


def copy_library(folder, *more):
    """Copies the library, and more files and folders of the project."""
    for part in (*LIBRARY, *more):
        if (TOP / part).is_dir():
            shutil.copytree(TOP / part, folder / part)
        else:
            shutil.copy(TOP / part, folder)


@contextlib.contextmanager
def new_folder(write_folder, name="a folder, да"):
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch) / name
        folder.mkdir()
        write_folder(folder)
        yield folder


def on_one_line(text):
    """Undoes the line breaks that CMake adds to messages."""
    return " ".join(text.split())


class RefusalTest(unittest.TestCase):
    def outcome(self, command):
        """The exit code and the whole output."""
        made = subprocess.run(list(map(str, command)), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, errors="replace", check=False, timeout=100)
        return made.returncode, on_one_line(made.stdout)

    def accepts(self, command):
        code, said = self.outcome(command)
        self.assertEqual(code, 0, said)
        return said

    def refuses(self, complaint, command):
        code, said = self.outcome(command)
        self.assertGreater(code, 0, f"accepted or crashed: {said}")
        self.assertIn(on_one_line(complaint), said)
        self.assertNotIn("Traceback", said)

    def refuses_each(self, write_folder, command, rows, *name):
        """`write_folder(folder)` writes what `command(folder)` accepts."""
        for row in (None, *rows):
            with self.subTest(row.name if row else "nothing is false"), new_folder(write_folder, *name) as folder:
                if row:
                    falsify(folder / row.file, row.old, row.new)
                    self.refuses(row.complaint, command(folder))
                else:
                    said = self.accepts(command(folder))
                    for other in rows:
                        self.assertNotIn(on_one_line(other.complaint), said)
