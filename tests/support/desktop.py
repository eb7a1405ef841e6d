"""A private desktop: an X display, a window manager and a session bus of its own.

Several of them can run side by side, though only one in a process, because assistive technology
connects to the first bus for good. Nothing of the caller's session is touched. Everything that was
started ends with it.
"""

import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time


class TimedOut(Exception):
    """What was waited for did not come."""


def wait_for(condition, what, seconds=30):
    """The first true value of condition(), asked again and again."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise TimedOut(f"waited {seconds} s for {what}")
        time.sleep(0.05)


class Desktop:
    """Use it in a with statement; afterwards os.environ is as it was before."""

    def __init__(self, width=1600, height=1000):
        self.size = (width, height)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="zorvane-desktop-"))
        self._processes = []
        self._environment = dict(os.environ)

    def __enter__(self):
        try:
            self._prepare_environment()
            self._start_display()
            self._start_bus()
            self._start_window_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            _end(process)
        os.environ.clear()
        os.environ.update(self._environment)
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, *command, log=None, environment=None, **options):
        """Starts a program on this desktop; its output goes to the file log, or nowhere."""
        output = open(log, "wb") if log else subprocess.DEVNULL
        options.setdefault("stdout", output)
        options.setdefault("stderr", output)
        process = subprocess.Popen(
            [str(part) for part in command],
            env={**os.environ, **(environment or {})},
            start_new_session=True,
            **options,
        )
        if log:
            output.close()
        self._processes.append(process)
        return process

    def stop(self, process):
        """Ends a program that was started here, and what it started."""
        self._processes.remove(process)
        _end(process)

    def new_folder(self):
        """An empty folder that goes when the desktop goes."""
        return pathlib.Path(tempfile.mkdtemp(dir=self.folder))

    def _prepare_environment(self):
        home = self.folder / "home"
        runtime = self.folder / "run"
        home.mkdir()
        runtime.mkdir(mode=0o700)
        for name in list(os.environ):
            if name.startswith(("XDG_", "DBUS_", "WAYLAND_", "QT_", "GTK_", "GDK_")):
                del os.environ[name]
        os.environ.update(HOME=str(home), XDG_RUNTIME_DIR=str(runtime), LC_ALL="C.UTF-8")
        # Nobody listens there: nothing on this desktop reaches the network.
        os.environ.update(http_proxy="http://127.0.0.1:9", https_proxy="http://127.0.0.1:9")

    def _start_display(self):
        reading, writing = os.pipe()
        width, height = self.size
        self.start(
            "Xvfb", "-displayfd", writing, "-screen", "0", f"{width}x{height}x24",
            "-nolisten", "tcp", "-noreset", pass_fds=[writing],
        )
        os.close(writing)
        with os.fdopen(reading) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise TimedOut("Xvfb did not start")
        os.environ["DISPLAY"] = f":{number}"

    def _start_bus(self):
        bus = self.start(
            "dbus-daemon", "--session", "--nofork", "--print-address=1", stdout=subprocess.PIPE
        )
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().decode().strip()
        bus.stdout.close()

    def _start_window_manager(self):
        self.start("openbox", "--sm-disable")
        wait_for(
            lambda: "window id" in output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
            "the window manager",
        )


def output(*command):
    """What a short command prints; nothing if it fails."""
    result = subprocess.run(
        [str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL
    )
    return result.stdout.decode() if result.returncode == 0 else ""


def _end(process):
    """Ends a program and what it started."""
    for number, patience in ((signal.SIGTERM, 3), (signal.SIGKILL, 3)):
        try:
            os.killpg(process.pid, number)
        except ProcessLookupError:
            pass
        try:
            process.wait(patience)
            return
        except subprocess.TimeoutExpired:
            continue
