"""Building the measuring programs and installing the Debian packages they need."""
import os
import shutil
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BENCH = ROOT / "bench"
BUILD = ROOT / "build" / "bench"
PROGRAMS = BUILD / "bench"
BUILD_PACKAGES = ["cmake", "ninja-build", "g++", "libbenchmark-dev", "libopenblas-dev"]


def is_installed(package):
    query = ["dpkg-query", "--show", "--showformat=${Status}", package]
    if not shutil.which(query[0]):
        return False
    return subprocess.run(query, capture_output=True, text=True).stdout.endswith("ok installed")


def install(packages):
    """Installs missing Debian packages if possible; otherwise prints which could not be installed."""
    missing = [package for package in packages if not is_installed(package)]
    if not missing:
        return
    if not shutil.which("apt-get") or os.geteuid() != 0:
        print("cannot install without apt-get and root:", " ".join(missing))
        return
    subprocess.run(["apt-get", "update"], stdout=subprocess.DEVNULL)
    command = ["apt-get", "install", "--yes", "--no-install-recommends", *missing]
    if subprocess.run(command, stdout=subprocess.DEVNULL).returncode != 0:
        print("apt-get could not install all of:", " ".join(missing))


def build():
    """Optimised build of everything that is measured, in a separate folder."""
    configure = [
        "cmake",
        "-S",
        ROOT,
        "-B",
        BUILD,
        "-G",
        "Ninja",
        "-DCMAKE_BUILD_TYPE=Release",
        "-DZN_BENCH=ON",
        "-DZN_TESTS=OFF",
    ]
    for command in (configure, ["cmake", "--build", BUILD]):
        done = subprocess.run(command, capture_output=True, text=True)
        if done.returncode != 0:
            raise SystemExit((done.stdout + done.stderr)[-4000:])
