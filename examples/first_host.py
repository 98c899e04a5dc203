"""The first host, in Python. In the top folder: python3 examples/first_host.py FOLDER-OF-THE-LIBRARY"""

import ctypes
import os
import sys

for stream in (sys.stdout, sys.stderr):
    stream.reconfigure(encoding="utf-8")  # in any locale
names = {"nt": "kelmo_Mestrel_Localizer.dll", "posix": "libkelmo_Mestrel_Localizer.so"}
library = ctypes.CDLL(os.path.join(os.path.abspath(sys.argv[1]), names[os.name]))
library.Init.argtypes = [ctypes.c_wchar_p, ctypes.c_wchar_p]
library.Init0.argtypes = [ctypes.c_wchar_p]
library.ExportPhyVal.argtypes = []
library.LoadDictionary.argtypes = [ctypes.c_wchar_p, ctypes.c_wchar_p]
library.UseLanguage.argtypes = [ctypes.c_wchar_p]
library.LANG.argtypes = [ctypes.c_wchar_p]
library.LANG.restype = ctypes.c_wchar_p
library.GetError.argtypes = [ctypes.c_int32]
library.GetError.restype = ctypes.c_wchar_p  # never pass it GetErrorsCount(): it would throw
library.GetErrorsCount.restype = ctypes.c_int64
library.ClearErrors.restype = None

library.Init("examples", "de")
for fileName in ("en.txt", "de.txt"):
    if library.LoadDictionary("examples/LANG", fileName) < 0:
        sys.exit(library.GetError(-1))
library.UseLanguage("de")
print(f"{library.LANG('menu.file')}: {library.LANG('menu.file.save')}, {library.LANG('menu.file.exit')}")
