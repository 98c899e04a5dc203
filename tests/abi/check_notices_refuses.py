"""Proves that check_notices.py refuses a page or a map that is wrong, with the complaint that belongs to it.

    python3 check_notices_refuses.py NOTICES.md .dll|.so MAP
"""

import pathlib
import subprocess
import sys
import tempfile

check = pathlib.Path(__file__).with_name("check_notices.py")
page, suffix, link_map = sys.argv[1:]
page = pathlib.Path(page).read_text("utf-8")
link_map = pathlib.Path(link_map).read_text("utf-8", "surrogateescape")
start_up = {".dll": "dllcrt2.o", ".so": "crti.o"}[suffix]

# What is wrong, the page, the map, the complaint.
refused = [
    ("an archive more in the map", page, "/a folder/libmore.a(more.o)\n" + link_map,
     "libmore.a(more.o) is in the file, but not in the table"),
    ("a member more of an archive whose members are named", page,
     "/a folder/libstdc++.a(floating_from_chars.o)\n" + link_map,
     "libstdc++.a(floating_from_chars.o) is in the file, but not in the table"),
    ("a start-up object more in the map", page, link_map + "\nLOAD /a folder/папка/crtmore.o\n",
     "crtmore.o is in the file, but not in the table"),
    ("a part missing in the page", page.replace(f"`{start_up}`", "`other.o`"), link_map,
     f"{start_up} is in the file, but not in the table"),
    ("a part missing in the map", page, link_map.replace(f"/{start_up}\n", "/nothing\n"),
     f"{start_up} is in the table, but not in the file"),
    ("an archive of the page without a member in the map", page.replace(f"`{start_up}`", f"`{start_up}`, `libnone.a`"),
     link_map, "libnone.a is in the table, but not in the file"),
    ("no table", page.replace(f"{suffix}`", "`"), link_map,
     f"the page has no table for the file with the suffix {suffix}"),
    ("no rows in the table", page.replace("| `", "| "), link_map,
     f"the page has no table for the file with the suffix {suffix}"),
    ("a map that holds nothing", page, "", "no linker has written it"),
    ("a map of another program", page, link_map.replace("CMakeFiles/", "other/"), "no linker has written it"),
]

failures = 0
with tempfile.TemporaryDirectory(prefix="уведомления и карты ") as folder:
    files = pathlib.Path(folder, "NOTICES.md"), pathlib.Path(folder, "library.map")
    command = [sys.executable, check, files[0], suffix, files[1]]
    for what, wrong_page, wrong_map, complaint in [("nothing", page, link_map, None), *refused]:
        files[0].write_text(wrong_page, "utf-8")
        files[1].write_text(wrong_map, "utf-8", "surrogateescape")
        run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, encoding="utf-8")
        as_expected = run.returncode == 1 and complaint in run.stdout if complaint else run.returncode == 0
        if not as_expected:
            failures += 1
            print(f"Wrong: {what}. It ended with {run.returncode}, and not with \"{complaint}\", after\n{run.stdout}")
print(f"{len(refused)} wrong inputs, {failures} failures")
sys.exit(1 if failures else 0)
