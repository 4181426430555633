"""The files of the tree that the checks read."""
import os
import subprocess

SKIPPED = ("build", "out", ".git")


def tracked_files(root):
    """Paths below root with '/' between folders: what git would add, or all without git."""
    listed = subprocess.run(
        ["git", "-C", root, "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
    if listed.returncode == 0:
        names = sorted(set(listed.stdout.decode().split("\0")) - {""})
        return [name for name in names if os.path.isfile(os.path.join(root, name))]
    names = []
    for folder, folders, files in os.walk(root):
        folders[:] = [f for f in folders if not f.startswith(SKIPPED)]
        names += [os.path.relpath(os.path.join(folder, f), root).replace(os.sep, "/")
                  for f in files]
    return sorted(names)


def report(faults, what):
    """Prints the faults and gives the exit code."""
    for fault in faults:
        print(fault)
    print(f"{what}: {len(faults)} faults")
    return 1 if faults else 0
