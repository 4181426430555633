"""Finds or builds what the comparison runs: the product, its peers and the small programs."""

import shutil
import subprocess
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
FLAGS = ["-O2", "-std=c++20", "-Wall", "-Wextra", "-I", str(ROOT)]
ABSL = ["-labsl_hash", "-labsl_raw_hash_set", "-labsl_city", "-labsl_low_level_hash"]

# What a program is built with beyond its source; a peer that is not installed is left out.
PEERS = {
    "ctemplate_peer": ("libctemplate-dev", "/usr/include/ctemplate/template.h", [],
                       ["-lctemplate"]),
    "clearsilver_peer": ("clearsilver-dev", "/usr/include/ClearSilver/ClearSilver.h",
                         ["-isystem", "/usr/include/ClearSilver"],
                         ["-lneo_cs", "-lneo_utl", "-lz"]),
    "flat_hash": ("libabsl-dev", "/usr/include/absl/container/flat_hash_map.h", [], ABSL),
    "m4": ("m4", "/usr/bin/m4", [], []),
    "gnuplot": ("gnuplot-nox", "/usr/bin/gnuplot", [], []),
    "plplot_peer": ("libplplot-dev", "/usr/include/plplot/plplot.h",
                    ["-isystem", "/usr/include/plplot"], ["-lplplot"]),
    "Rscript": ("r-base-core", "/usr/bin/Rscript", [], []),
    "pandas": ("python3-pandas", "/usr/lib/python3/dist-packages/pandas/__init__.py", [], []),
    "docxtpl": ("python3-docxtpl", "/usr/lib/python3/dist-packages/docxtpl/__init__.py", [], []),
    "data.table": ("r-cran-data.table", "/usr/lib/R/site-library/data.table/DESCRIPTION", [], []),
    "rmarkdown": ("r-cran-rmarkdown", "/usr/lib/R/site-library/rmarkdown/DESCRIPTION", [], []),
    "ggplot2": ("r-cran-ggplot2", "/usr/lib/R/site-library/ggplot2/DESCRIPTION", [], []),
    "pandoc": ("pandoc", "/usr/bin/pandoc", [], []),
    "matplotlib": ("python3-matplotlib", "/usr/lib/python3/dist-packages/matplotlib/__init__.py",
                   [], []),
}

# Peers that are run as they are installed, and what runs them.
INSTALLED = {"m4": "m4", "gnuplot": "gnuplot", "Rscript": "Rscript", "data.table": "Rscript",
             "rmarkdown": "Rscript", "ggplot2": "Rscript", "pandoc": "pandoc",
             "matplotlib": "/usr/bin/python3", "pandas": "/usr/bin/python3",
             "docxtpl": "/usr/bin/python3"}

# The library that the program qt_charts measures beside the product's toolkit part.
QT_PEER = ("libqcustomplot-dev", "/usr/include/qcustomplot.h")
QT_MODULES = ["Qt6Widgets", "Qt6PrintSupport"]

# The libraries that the program md5 measures beside the product, as far as they are installed.
MD5_LIBRARIES = {
    "libssl-dev": ("/usr/include/openssl/evp.h", "-lcrypto"),
    "nettle-dev": ("/usr/include/nettle/md5.h", "-lnettle"),
    "libgcrypt20-dev": ("/usr/include/gcrypt.h", "-lgcrypt"),
}

# And those of the program drawing; libEMF has a source of its own.
LIBEMF_PEER = str(HERE / "programs" / "libemf_peer.cpp")
DRAWING_LIBRARIES = {
    "libemf-dev": ("/usr/include/libEMF/emf.h", "-lEMF"),
    "libcairo2-dev": ("/usr/include/cairo/cairo-svg.h", "-lcairo"),
    "libsodium-dev": ("/usr/include/sodium.h", "-lsodium"),
    "nettle-dev": ("/usr/include/nettle/base16.h", "-lnettle"),
}


def installed(libraries):
    """The link options of those libraries that are there."""
    return [option for proof, option in libraries.values() if Path(proof).exists()]


def toolkit_options():
    """What compiling and linking with the toolkit needs."""
    return {kind: subprocess.run(["pkg-config", kind, *QT_MODULES], text=True, check=True,
                                 stdout=subprocess.PIPE).stdout.split()
            for kind in ("--cflags", "--libs")}


def install_peers():
    proofs = [(package, proof) for package, proof, _, _ in PEERS.values()] + [QT_PEER]
    for libraries in (MD5_LIBRARIES, DRAWING_LIBRARIES):
        proofs += [(package, proof) for package, (proof, _) in libraries.items()]
    missing = [package for package, proof in proofs if not Path(proof).exists()]
    if not missing:
        return
    print("installing", *missing, flush=True)
    install = ["apt-get", "install", "-y", "-qq", "--no-install-recommends", *missing]
    for command in (["apt-get", "update", "-qq"], install):
        subprocess.run(command, stdout=subprocess.DEVNULL, check=False)


class Tools:
    """The programs by name; `has(name)` tells whether one is there."""

    def __init__(self, build, with_product):
        self.build = Path(build).resolve()
        self.folder = self.build / "comparison"
        self.folder.mkdir(parents=True, exist_ok=True)
        self.paths = {}
        install_peers()
        for name in ("turns", "limits", "empty"):
            self.compile(name, [], [])
        for name, (package, proof, before, after) in PEERS.items():
            if not Path(proof).exists():
                print(f"{name} is left out: package {package} is not installed")
            elif name in INSTALLED:
                self.paths[name] = shutil.which(INSTALLED[name])
            else:
                self.compile(name, before, after)
        if with_product:
            self.build_product()

    def has(self, *names):
        return all(name in self.paths for name in names)

    def __getitem__(self, name):
        return self.paths[name]

    def compile(self, name, before, after):
        source = HERE / "programs" / f"{name}.cpp"
        program = self.folder / name
        inputs = [source, *(HERE / "programs").glob("*.h"),
                  *(Path(word) for word in (*before, *after) if word.endswith((".a", ".cpp")))]
        if not program.exists() or any(
                program.stat().st_mtime < file.stat().st_mtime for file in inputs):
            subprocess.run(["g++", *FLAGS, "-I", ROOT, *before, str(source), "-o", str(program),
                            *after], check=True)
        self.paths[name] = program

    def build_product(self):
        """Builds the command line and the libraries in Release form."""
        configure = ["cmake", "-S", ROOT, "-B", self.build, "-DCMAKE_BUILD_TYPE=Release",
                     "-DBUILD_SHARED_LIBS=OFF", "-DTESSALINK_BUILD_APPS=ON",
                     "-DTESSALINK_BUILD_TESTS=OFF", "-DTESSALINK_BUILD_EXAMPLES=OFF"]
        subprocess.run(configure, stdout=subprocess.DEVNULL, check=True)
        subprocess.run(["cmake", "--build", self.build, "-j2"], stdout=subprocess.DEVNULL,
                       check=True)
        libraries = [next(self.build.rglob(f"libtessalink_{name}.a"))
                     for name in ("report", "core", "base")]
        self.compile("product", [], list(map(str, libraries)))
        self.compile("md5", [], [*map(str, libraries), *installed(MD5_LIBRARIES)])
        peer = [LIBEMF_PEER] if Path(DRAWING_LIBRARIES["libemf-dev"][0]).exists() else []
        graphs = str(next(self.build.rglob("libtessalink_graphs.a")))
        for name in ("drawing", "charts", "profiles"):
            self.compile(name, peer,
                         [graphs, *map(str, libraries), *installed(DRAWING_LIBRARIES)])
        if peer:
            self.paths["libemf_peer"] = self.paths["profiles"]
        self.build_qt_charts([graphs, *map(str, libraries)])
        self.find_desk()
        self.paths["tessalink"] = next(
            path for path in self.build.rglob("tessalink") if path.is_file())

    def find_desk(self):
        """The desk, and an empty window beside it, where the desk is built."""
        desk = next(self.build.rglob("tessalink-desk"), None)
        if desk is None:
            print("desk is left out: it needs Qt 6 with Pdf and SQLite")
            return
        self.paths["desk"] = desk
        options = toolkit_options()
        self.compile("empty_window", ["-fPIC", *options["--cflags"]], options["--libs"])

    def build_qt_charts(self, libraries):
        """Builds the program that draws by the toolkit, where both it and the peer are there."""
        toolkit = next((str(path) for path in self.build.rglob("libtessalink_qt.a")), None)
        if toolkit is None or not Path(QT_PEER[1]).exists():
            print(f"qt_charts is left out: it needs Qt 6 and package {QT_PEER[0]}")
            return
        options = toolkit_options()
        self.compile("qt_charts", ["-fPIC", *options["--cflags"]],
                     [toolkit, *libraries, "-lQCustomPlotQt6", *options["--libs"]])
