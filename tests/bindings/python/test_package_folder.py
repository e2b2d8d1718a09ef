"""Where the package is installed to."""

import os
import site
import subprocess
import sys
import venv

import pytest

SCRIPT = os.path.join(os.environ["VELTRA_SOURCE_DIR"], "bindings", "python", "packageFolder.py")


def package_folder(interpreter, prefix):
    run = subprocess.run([interpreter, SCRIPT, prefix], check=True, stdout=subprocess.PIPE, text=True)
    return run.stdout.strip()


# The prefixes of a system and of what its administrator installs.
@pytest.mark.parametrize("prefix", ["/usr", "/usr/local"])
def test_the_interpreter_looks_into_it(prefix):
    folder = package_folder("/usr/bin/python3", prefix)
    assert os.path.join(prefix, folder) in site.getsitepackages([prefix]) + sys.path
    # Not that of the other prefix.
    assert folder.startswith("lib")


def test_a_virtual_environment_looks_into_it(tmp_path):
    venv.create(tmp_path, with_pip=False)
    interpreter = str(tmp_path / "bin" / "python")
    folder = tmp_path / package_folder(interpreter, str(tmp_path))
    (folder / "there.py").write_text("")
    subprocess.run([interpreter, "-c", "import there"], check=True)


def test_another_prefix_has_the_folder_of_a_virtual_environment():
    version = f"{sys.version_info.major}.{sys.version_info.minor}"
    assert package_folder("/usr/bin/python3", "/opt/x") == f"lib/python{version}/site-packages"
