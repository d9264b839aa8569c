# SPDX-License-Identifier: Apache-2.0
"""Recognised text of scans, through libzelk.so.

    import zelk

    with zelk.Engine() as engine:
        result = engine.recognize("scan.pdf", dpi=300, pdf="searchable.pdf")
        print(result.text)
        for page in result.pages:
            ...

The library is the installed libzelk.so.1, or the file that the environment variable ZELK_LIBRARY
names. It has one state for the whole process: use one Engine at a time, from one thread at a time.
A disk that fills up while a searchable PDF is written ends the process: what the library throws
then cannot pass through the interpreter.
"""

import ctypes
import json
import os
import typing


class Error(Exception):
    """The engine cannot be started or is closed, a document cannot be opened, or a searchable PDF
    cannot be written; `result` is then what was recognised all the same, else None."""

    result = None


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
    "zelk_set_double_document_filename": (ctypes.c_bool, [_TEXT]),
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


def _stamp(path):
    """Changes when the file is written anew; None while there is no file."""
    try:
        status = os.stat(path)
    except OSError:
        return None
    return status.st_dev, status.st_ino, status.st_size, status.st_mtime_ns


class Engine:
    """A started engine: the default one, or libQVEngine.so of `directory`. Stop it with close(), or
    by leaving a with block; nothing can be asked of it afterwards."""

    def __init__(self, directory=None):
        self._started = None  # the library, from a successful start to close()
        library = _load()
        directory = os.path.join(directory or _default_directory(library), "")
        if library.zelk_init_engine(os.fsencode(directory)) != 0:
            raise Error(f"the engine in {directory} cannot be started")
        self._started = library

    @property
    def _library(self):
        if self._started is None:
            raise Error("the engine is closed")
        return self._started

    def __enter__(self):
        self._library  # pylint: disable=pointless-statement ; raises for a closed engine
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Stops the engine; results stay. Closing again does nothing."""
        if self._started is not None:
            self._started.zelk_uninit_engine()
        self._started = None

    def recognize(self, path, dpi=200, pdf=None):
        """Result of an image, TIFF or PDF file, by its extension;
        PDF pages are rendered at `dpi` dots per inch.
        With `pdf`, a name that ends in .pdf, the pages are also written as a searchable PDF."""
        try:
            page_count = self._library.zelk_load_image_document(os.fsencode(path), dpi)
            if page_count < 1:
                raise Error(f"{path} cannot be opened")
            return self._recognize(page_count, pdf)
        finally:
            self._forget()

    def recognize_images(self, paths, dpi=200, pdf=None):
        """Result of image files, each one page; those that cannot be read are left out.
        With `pdf`, a name that ends in .pdf, the pages are also written as a searchable PDF, in
        which `dpi` pixels are an inch."""
        try:
            # Pages of a list have the resolution of the last load, also of one that fails.
            self._library.zelk_load_image_document(b"/dev/null/no.png", dpi)
            for path in paths:
                self._library.zelk_add_image(os.fsencode(path))
            return self._recognize(len(paths), pdf)
        finally:
            self._forget()

    def _forget(self):
        """Leaves no document, list, writer or output name to a later call."""
        if self._started is not None:
            self._started.zelk_free_image_document()
            self._started.zelk_clear_images()

    def _recognize(self, page_count, pdf):
        before = None
        if pdf is not None:
            before = _stamp(pdf)
            if not self._library.zelk_set_double_document_filename(os.fsencode(pdf)):
                raise Error(f"{pdf}: the name of a searchable PDF ends in .pdf")
        result = self._results(page_count)
        if pdf is not None and _stamp(pdf) in (None, before):
            error = Error(f"{pdf} cannot be written, or no page could be read")
            error.result = result
            raise error
        return result

    def _results(self, page_count):
        self._library.zelk_recognize()
        texts = [self._library.zelk_get_ocr_json_string(page) for page in range(page_count)]
        while texts and not texts[-1]:  # behind the last entry
            texts.pop()
        text = self._library.zelk_get_ocr_string().decode("utf-8", "replace")
        return Result(text, [_page(page) for page in texts], page_count)
