"""Prints the messages of a dictionary: python3 examples/check_dictionary.py FOLDER-OF-THE-LIBRARY FILE

The exit code is 1 if there is a message.
"""

import ctypes
import os
import sys

for stream in (sys.stdout, sys.stderr):
    stream.reconfigure(encoding="utf-8")  # in any locale
names = {"nt": "kelmo_Mestrel_Localizer.dll", "posix": "libkelmo_Mestrel_Localizer.so"}
library = ctypes.CDLL(os.path.join(os.path.abspath(sys.argv[1]), names[os.name]))
library.LoadDictionary.argtypes = [ctypes.c_wchar_p, ctypes.c_wchar_p]
library.GetError.argtypes = [ctypes.c_int32]
library.GetError.restype = ctypes.c_wchar_p
library.GetErrorsCount.restype = ctypes.c_int64

folder, fileName = os.path.split(sys.argv[2])
library.LoadDictionary(folder or ".", fileName)
for index in range(library.GetErrorsCount()):
    print(library.GetError(index))
print("messages:", library.GetErrorsCount())
sys.exit(library.GetErrorsCount() > 0)
