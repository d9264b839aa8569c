# SPDX-License-Identifier: Apache-2.0
"""Recognised text of scans, through libzelk.so.

    import zelk

    with zelk.Engine() as engine:
        result = engine.recognize("scan.pdf", dpi=300)
        print(result.text)
        for page in result.pages:
            ...

The library is the installed libzelk.so.1, or the file that the environment variable ZELK_LIBRARY
names. It has one state for the whole process: use one Engine at a time, from one thread at a time.
"""

import ctypes
import json
import os
import typing


class Error(Exception):
    """The engine cannot be started, or a document cannot be opened."""


class Result(typing.NamedTuple):
    """What was recognised: all text; the parsed JSON of each page that was read, None where the
    engine gave something else; how many pages were asked for. Pages that cannot be read are left
    out."""

    text: str
    pages: list
    page_count: int


class _SymbolInfo(ctypes.Structure):
    _fields_ = [("file", ctypes.c_char_p), ("base", ctypes.c_void_p),
                ("name", ctypes.c_char_p), ("address", ctypes.c_void_p)]


_TEXT, _NUMBER = ctypes.c_char_p, ctypes.c_int
_FUNCTIONS = {
    "zelk_init_engine": (_NUMBER, [_TEXT]),
    "zelk_uninit_engine": (None, []),
    "zelk_load_image_document": (_NUMBER, [_TEXT, _NUMBER]),
    "zelk_free_image_document": (None, []),
    "zelk_add_image": (ctypes.c_bool, [_TEXT]),
    "zelk_clear_images": (None, []),
    "zelk_recognize": (_NUMBER, []),
    "zelk_get_ocr_string": (_TEXT, []),
    "zelk_get_ocr_json_string": (_TEXT, [_NUMBER]),
}


def _load():
    library = ctypes.CDLL(os.environ.get("ZELK_LIBRARY", "libzelk.so.1"))
    for name, (result, arguments) in _FUNCTIONS.items():
        function = getattr(library, name)
        function.restype, function.argtypes = result, arguments
    return library


def _default_directory(library):
    """zelk/engine/ beside the file that the library was loaded from."""
    info = _SymbolInfo()
    ctypes.CDLL(None).dladdr(ctypes.cast(library.zelk_init_engine, ctypes.c_void_p),
                             ctypes.byref(info))
    return os.path.join(os.path.dirname(os.path.realpath(os.fsdecode(info.file))), "zelk/engine")


def _page(text):
    try:
        return json.loads(text)
    except ValueError:
        return None


class Engine:
    """A started engine: the default one, or libQVEngine.so of `directory`. Stop it with close(), or
    by leaving a with block."""

    def __init__(self, directory=None):
        self._library = _load()
        directory = os.path.join(directory or _default_directory(self._library), "")
        if self._library.zelk_init_engine(os.fsencode(directory)) != 0:
            raise Error(f"the engine in {directory} cannot be started")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Stops the engine; results stay."""
        self._library.zelk_uninit_engine()

    def recognize(self, path, dpi=200):
        """Result of an image, TIFF or PDF file, by its extension;
        PDF pages are rendered at `dpi` dots per inch."""
        page_count = self._library.zelk_load_image_document(os.fsencode(path), dpi)
        if page_count < 1:
            raise Error(f"{path} cannot be opened")
        try:
            return self._recognize(page_count)
        finally:
            self._library.zelk_free_image_document()

    def recognize_images(self, paths):
        """Result of image files, each one page; those that cannot be read are left out."""
        self._library.zelk_clear_images()
        for path in paths:
            self._library.zelk_add_image(os.fsencode(path))
        try:
            return self._recognize(len(paths))
        finally:
            self._library.zelk_clear_images()

    def _recognize(self, page_count):
        self._library.zelk_recognize()
        texts = [self._library.zelk_get_ocr_json_string(page) for page in range(page_count)]
        while texts and not texts[-1]:  # behind the last entry
            texts.pop()
        text = self._library.zelk_get_ocr_string().decode("utf-8", "replace")
        return Result(text, [_page(page) for page in texts], page_count)
