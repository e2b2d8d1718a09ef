"""Prints where, below the installation prefix that is its argument, the interpreter that runs it looks
for packages. Debian's looks into lib/python3/dist-packages below /usr and into
lib/python3.11/dist-packages below /usr/local; below other prefixes it is the folder that a virtual
environment has."""

import os
import sys
import sysconfig


def package_folder(prefix):
    known = sysconfig.get_scheme_names()
    for scheme in (sysconfig.get_default_scheme(), "deb_system"):
        if scheme in known:
            folder = os.path.relpath(sysconfig.get_path("platlib", scheme), prefix)
            # /usr/local is below /usr, and yet another prefix.
            if folder.startswith("lib"):
                return folder
    return os.path.relpath(
        sysconfig.get_path("platlib", "posix_prefix", {"platbase": prefix}), prefix)


print(package_folder(os.path.realpath(sys.argv[1])))
