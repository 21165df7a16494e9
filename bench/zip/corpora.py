"""The zip benchmark's inputs, made once in the work folder and reused while their options match.

Real files, as a new user would try the functions, copied from this machine with their folders
(`usr/share/...` below the corpus):
- large files: regular files of 256 KiB to 64 MiB under /usr/lib, /usr/share and /usr/bin,
  800 MB at --scale 1;
- many small files: text files (no NUL in their first 8 KiB) of 3 KiB to 256 KiB under
  /usr/include, /usr/share, /usr/lib and /usr/src, 9,500 files or 190 MB at --scale 1, whichever
  comes first (the lower bound gives the mean size of a source tree, about 20 KB), taken a whole
  folder at a time, so folders hold as many files as source trees' do.
Candidates (files, or for small files folders) are taken in the order of SHA-1(seed, path), so a
selection is the same on the same machine and spreads over the whole of /usr; hard links count
once; names Windows cannot hold
(reserved characters or device names, a trailing dot or space, paths that differ only in letter
case) are left out. What the machine lacks is topped up with make_corpus.py's generators in
`generated/`. The chosen paths are in WORK/<corpus>.selection.
"""
import bisect
import hashlib
import itertools
import os
import random
import shutil
import stat
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import make_corpus  # noqa: E402

KIB, MB = 1024, 1024 * 1024
RESERVED = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"} | {
    "%s%d" % (p, i) for p in ("COM", "LPT") for i in range(1, 10)}
LARGE = dict(roots=("/usr/lib", "/usr/share", "/usr/bin"), smallest=256 * KIB, largest=64 * MB,
             text_only=False, whole_folders=False, files=None, megabytes=800)
SMALL = dict(roots=("/usr/include", "/usr/share", "/usr/lib", "/usr/src"), smallest=3 * KIB,
             largest=256 * KIB, text_only=True, whole_folders=True, files=9500, megabytes=190)


def usable_on_windows(part):
    if any(c in '<>:"|?*\\' or ord(c) < 32 for c in part) or part[-1] in ". ":
        return False
    return part.split(".")[0].upper() not in RESERVED


def candidates(roots, smallest, largest, seed, whole_folders):
    """(order key, path, size) of every eligible regular file below `roots`; with
    `whole_folders` a folder's files come together, in name order."""
    seen, found = set(), []
    for root in roots:
        for folder, _, names in os.walk(root):
            for name in names:
                path = os.path.join(folder, name)
                try:
                    info = os.lstat(path)
                    path.encode("utf-8")
                except (OSError, UnicodeEncodeError):
                    continue
                if (not stat.S_ISREG(info.st_mode) or not smallest <= info.st_size <= largest
                        or (info.st_dev, info.st_ino) in seen or not os.access(path, os.R_OK)):
                    continue
                seen.add((info.st_dev, info.st_ino))
                key = hashlib.sha1(("%d %s" % (seed, folder if whole_folders else path))
                                   .encode()).digest()
                found.append((key, path, info.st_size))
    found.sort()
    return found


def is_text(path):
    try:
        with open(path, "rb") as f:
            return b"\0" not in f.read(8 * KIB)
    except OSError:
        return False


def select(kind, scale, seed):
    """The source paths of one corpus (see the module's notes), and the bytes they hold."""
    budget = kind["megabytes"] * MB * scale
    count = kind["files"] * scale if kind["files"] else None
    chosen, total, spellings = [], 0, {}
    for _, path, size in candidates(kind["roots"], kind["smallest"], kind["largest"], seed,
                                    kind["whole_folders"]):
        if total >= budget or (count is not None and len(chosen) >= count):
            break
        if total + size > budget:
            continue
        parts = path.strip("/").split("/")
        prefixes = ["/".join(parts[:i + 1]) for i in range(len(parts))]
        if (not all(usable_on_windows(p) for p in parts)
                or any(spellings.get(p.lower(), p) != p for p in prefixes)
                or (kind["text_only"] and not is_text(path))):
            continue
        for p in prefixes:
            spellings[p.lower()] = p
        chosen.append(path)
        total += size
    return chosen, total


def top_up(root, kind, scale, seed, files, total):
    """Generated files for what the machine lacked: text (small ones of 3 to 40 KiB, about a
    source file's mean), or large ones of text, binary tables and random bytes."""
    rng = random.Random(seed)
    budget = kind["megabytes"] * MB * scale
    count = kind["files"] * scale if kind["files"] else None
    made = 0
    while total < budget * 0.95 and (count is None or files < count):
        size = rng.randint(kind["smallest"], 40 * KIB if kind["text_only"] else 4 * MB)
        maker = make_corpus.text if kind["text_only"] else rng.choice(
            [make_corpus.text, make_corpus.table, lambda _, n: rng.randbytes(n)])
        make_corpus.write(os.path.join(root, "generated", "part %d" % (made // 100),
                                       "file %d.dat" % made), maker(rng, size))
        made, files, total = made + 1, files + 1, total + size
    return made


def tree(root):
    """(folders, files) below `root`, relative with '/', parents first, in a stable order."""
    folders, files = [], []
    for folder, subfolders, names in os.walk(root):
        subfolders.sort()
        relative = os.path.relpath(folder, root).replace(os.sep, "/")
        if relative != ".":
            folders.append(relative)
        prefix = "" if relative == "." else relative + "/"
        files += [prefix + n for n in sorted(names)]
    return folders, files


def manifest(root):
    """Every folder and every file's size and hash: two trees with equal manifests are equal."""
    folders, files = tree(root)
    sums = {}
    for name in files:
        digest = hashlib.blake2b()
        with open(os.path.join(root, name), "rb") as f:
            while chunk := f.read(MB):
                digest.update(chunk)
        sums[name] = (os.path.getsize(os.path.join(root, name)), digest.hexdigest())
    return set(folders), sums


def write_floor_input(root, listing, contents):
    """The unpacking floor's input: the listing of `root` and every file's bytes in its order."""
    folders, files = tree(root)
    with open(listing, "w", encoding="utf-8", newline="\n") as out, open(contents, "wb") as blob:
        for name in folders:
            out.write("D\t%s\n" % name)
        for name in files:
            path = os.path.join(root, name)
            out.write("F\t%d\t%s\n" % (os.path.getsize(path), name))
            with open(path, "rb") as f:
                shutil.copyfileobj(f, blob, MB)


def prepare(work, name, kind, scale, seed):
    """WORK/NAME (the corpus) with its floor input beside it; made anew when the options change."""
    root = os.path.join(work, name)
    stamp = os.path.join(work, name + ".stamp")
    wanted = "scale %r seed %d %r\n" % (scale, seed, sorted(kind.items()))
    if os.path.isdir(root) and os.path.exists(stamp) and open(stamp).read() == wanted:
        return root
    shutil.rmtree(root, ignore_errors=True)
    chosen, total = select(kind, scale, seed)
    for path in chosen:
        target = os.path.join(root, path.lstrip("/"))
        os.makedirs(os.path.dirname(target), exist_ok=True)
        shutil.copyfile(path, target)
    made = top_up(root, kind, scale, seed, len(chosen), total)
    if made:
        print("%s: this machine lacked files, %d generated ones added" % (name, made))
    with open(os.path.join(work, name + ".selection"), "w") as f:
        f.write("".join(p + "\n" for p in chosen))
    write_floor_input(root, os.path.join(work, name + ".listing"),
                      os.path.join(work, name + ".contents"))
    with open(stamp, "w") as f:
        f.write(wanted)
    return root


def prepare_large_file(work, corpus, gigabytes, seed):
    """WORK/large file/big.bin: `gigabytes` of 64 KiB pieces from seeded places in the large
    corpus, so the bytes are real data that compresses as the corpus does, not zeros."""
    folder = os.path.join(work, "large file")
    path = os.path.join(folder, "big.bin")
    stamp = os.path.join(work, "large file.stamp")
    wanted = "%r %d %s\n" % (gigabytes, seed, open(corpus + ".stamp").read())
    if os.path.exists(path) and os.path.exists(stamp) and open(stamp).read() == wanted:
        return folder
    _, names = tree(corpus)
    sizes = [os.path.getsize(os.path.join(corpus, n)) for n in names]
    ends = list(itertools.accumulate(sizes))
    rng = random.Random(seed)
    left = int(gigabytes * 1024 ** 3)
    os.makedirs(folder, exist_ok=True)
    with open(path, "wb") as out:
        while left > 0:
            at = rng.randrange(ends[-1])
            index = bisect.bisect_right(ends, at)
            with open(os.path.join(corpus, names[index]), "rb") as f:
                f.seek(at - (ends[index] - sizes[index]))
                piece = f.read(min(64 * KIB, left))
            out.write(piece)
            left -= len(piece)
    with open(stamp, "w") as f:
        f.write(wanted)
    return folder
