"""What the Python tests share: gscodec (the C++ side they compare with) and answers built for
them. ctest passes GSCODEC and GUIDESCREEN_CODEC_LIBRARY (tests/CMakeLists.txt)."""

import json
import os
import subprocess
import tempfile
import unittest
from typing import Any, Dict, List, Tuple

GSCODEC = os.environ.get("GSCODEC", "")

needs_gscodec = unittest.skipUnless(GSCODEC, "GSCODEC is not set: a build without tools")


def gscodec(*args: str, answer: bytes = b"") -> Tuple[int, str, str]:
    """Runs gscodec with `answer` in a file given as its FILE argument after the first two
    words; the exit status, standard output and standard error."""
    words = list(args)
    with tempfile.NamedTemporaryFile(suffix=".json") as file:
        if answer:
            file.write(answer)
            file.flush()
            words[2:2] = [file.name]
        done = subprocess.run([GSCODEC] + words, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              timeout=120, check=False)
    return (done.returncode, done.stdout.decode("utf-8", "surrogateescape"),
            done.stderr.decode("utf-8", "replace"))


def gscodec_json(*args: str, answer: bytes = b"") -> Any:
    """What gscodec prints, parsed; fails the test when it exits with an error."""
    status, out, err = gscodec(*args, answer=answer)
    if status != 0:
        raise AssertionError(f"gscodec {' '.join(args)} exited with {status}: {err}")
    return json.loads(out)


def sample(direction: str, operation: str) -> bytes:
    """gscodec's embedded sample: the answer ("decode") or the input form ("encode")."""
    status, out, err = gscodec("sample", direction, operation)
    if status != 0:
        raise AssertionError(f"gscodec sample {direction} {operation}: {err}")
    return out.encode("utf-8", "surrogateescape")


def listing(programmes: Dict[str, Dict[str, Any]]) -> bytes:
    """A GET_ALL_PROGRAMMES answer holding `programmes` by ID, each naming its ID as devices do."""
    return json.dumps({"infos": {key: dict(value, ProgrammeID=key)
                                 for key, value in programmes.items()}}).encode("utf-8")


def programme(name: str, windows: List[Dict[str, Any]] = ()) -> Dict[str, Any]:
    """An ordinary programme of the listing, named `name`."""
    return {"ProgrammeName": name, "Enable": True, "Ordinary": {"Windows": list(windows)}}


def text_window(*contents: str) -> Dict[str, Any]:
    """A window holding one text element per content."""
    return {"WinID": "w", "Elements": [{"Type": 2, "Name": f"t{i}", "Text": {"Content": content}}
                                       for i, content in enumerate(contents)]}
