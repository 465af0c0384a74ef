"""A simulated device for each test, and scripted servers on the Internet side of it."""

import ctypes
import hashlib
import os
import socket
import struct
import subprocess
import threading
import time
from collections import namedtuple
from pathlib import Path

import pytest

PROJECT = Path(__file__).resolve().parents[2]
PROGRAM = Path(os.environ.setdefault("TOLVANE", str(PROJECT / "build/native/tolvane")))
# A sanitizer and an emulator need descriptors, processes and files of their own.
HOSTED = "sanitize" in PROGRAM.parts or "LAB_EMULATOR" in os.environ
unhosted = pytest.mark.skipif(HOSTED, reason="limits the program's host more than the program")
NAME_SERVERS = ["198.51.100.53", "2001:db8:53::53"]
WEB_SERVERS = ["203.0.113.80", "2001:db8:80::80"]
A, CNAME, AAAA = 1, 5, 28
RESET = object()  # a step of a web script: end the connection with a reset

Result = namedtuple("Result", "code out err seconds cpu")
Query = namedtuple("Query", "server source name kind")


def document(date="2026-11-22 12:00:00", checksum=None):
    data = date if isinstance(date, bytes) else date.encode()
    digest = checksum or hashlib.md5(data[:20]).hexdigest()
    return (b'<?xml version="1.0" encoding="UTF-8"?>\n<tolvane date="' + data + b'">\n'
            b"\t<checksum>" + digest.encode() + b"</checksum>\n</tolvane>\n")


def page(body=None):
    return b"HTTP/1.0 200 OK\r\nContent-Type: text/xml\r\n\r\n" + (document() if body is None else body)


def packed(address):
    return socket.inet_pton(socket.AF_INET6 if ":" in address else socket.AF_INET, address)


def record(kind, data, length=None, owner=b"\xc0\x0c"):
    return owner + struct.pack(">HHIH", kind, 1, 60, len(data) if length is None else length) + data


def response(query, *records, count=None):
    header = struct.pack(">HHHHHH", 0x4242, 0x8183, 1, len(records) if count is None else count, 0, 0)
    return header + query[12:] + b"".join(records)


def right_answer(query, kind):
    return response(query, record(kind, packed(WEB_SERVERS[kind == AAAA])))


def question(query):
    labels, position = [], 12
    while query[position]:
        labels.append(query[position + 1 : position + 1 + query[position]].decode("latin-1"))
        position += 1 + query[position]
    return ".".join(labels), struct.unpack_from(">H", query, position + 1)[0]


class Device:
    def __init__(self, announced):
        pid, self.network = announced.split()
        self.enter = ["nsenter", "-t", pid, "-m", "-p", "-r"]
        self.internet = f"/proc/{pid}/ns/net"
        self.root = Path(f"/proc/{pid}/root/mnt/device")
        self.result_file = self.root / "tmp/tolvaneresult"
        self.queries, self.requests, self.sockets = [], [], []
        self.pages = {}  # by path; they go before the web script

    def command(self, *words, before=(), user="0:0"):
        """Runs a command in the device's namespaces and root directory, by `before`, a tool of the host's."""
        variables = ["PATH=/sbin:/bin", *(f"{k}={v}" for k, v in os.environ.items() if k.endswith("SAN_OPTIONS"))]
        chain = [*self.enter, f"--net={self.network}", *before, "chroot", f"--userspec={user}", "/mnt/device"]
        start, cpu = time.monotonic(), os.times()
        done = subprocess.run([*chain, "env", "-i", *variables, *words], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=120, check=False)
        used = os.times().children_user + os.times().children_system - cpu.children_user - cpu.children_system
        return Result(done.returncode, done.stdout.decode("latin-1"), done.stderr.decode("latin-1"),
                      time.monotonic() - start, used)

    def run(self, *arguments, shell=None, **options):
        """Runs the checker; `shell` is a command line that ends in `"$@"`, which stands for it."""
        prefix = ["sh", "-c", shell, "sh"] if shell else []
        files = self.files()
        result = self.command(*prefix, "tolvane", *arguments, **options)
        assert result.err == "" and (shell or self.files() == files)
        return result

    def files(self):
        return {file for place in ("tmp", "etc") for file in (self.root / place).iterdir()} - {self.result_file}

    def on_internet(self, make):
        """Calls `make` with the Internet's network; the sockets it makes stay there."""
        made = []

        def work():
            with open(self.internet) as namespace:
                assert ctypes.CDLL(None, use_errno=True).setns(namespace.fileno(), 0x40000000) == 0
            made.append(make())

        thread = threading.Thread(target=work)
        thread.start()
        thread.join()
        self.sockets.append(made[0])
        return made[0]

    def listen(self, address, port, kind):
        def make():
            info = socket.getaddrinfo(address, port, type=kind)[0]
            listener = socket.socket(info[0], kind)
            listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
            listener.bind(info[4])
            return listener

        return self.on_internet(make)

    def dns(self, *steps, servers=NAME_SERVERS):
        """Answers each query by the steps: a number waits, a function of (query, kind) gives a datagram to send."""

        def answer(listener, server, query, client):
            kind = question(query)[1]
            self.queries.append(Query(server, client, question(query)[0], kind))
            for step in steps:
                if callable(step):
                    listener.sendto(step(query, kind), client)
                else:
                    time.sleep(step)

        def serve(listener, server):
            while True:
                try:
                    answer(listener, server, *listener.recvfrom(65536))
                except OSError:
                    return  # the device is gone

        for server in servers:
            listener = self.listen(server, 53, socket.SOCK_DGRAM)
            threading.Thread(target=serve, args=(listener, server), daemon=True).start()

    def web(self, *scripts, servers=WEB_SERVERS):
        """The n-th connection follows the n-th script, later ones the last: bytes to send, seconds to wait, RESET."""

        def play(connection):
            script = scripts[min(len(self.requests), len(scripts) - 1)]
            self.requests.append(b"GET none" if script[:1] == [RESET] else connection.recv(4096))
            page_asked_for = self.pages.get(self.requests[-1].split()[1].decode("latin-1"))
            for step in [page_asked_for] if page_asked_for else script:
                if step is RESET:
                    connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
                elif isinstance(step, bytes):
                    connection.sendall(step)
                else:
                    time.sleep(step)

        def handle(connection):
            with connection:
                try:
                    play(connection)
                except OSError:
                    pass

        def serve(listener):
            while True:
                threading.Thread(target=handle, args=(listener.accept()[0],), daemon=True).start()

        for server in servers:
            listener = self.listen(server, 80, socket.SOCK_STREAM)
            listener.listen()
            threading.Thread(target=serve, args=(listener,), daemon=True).start()

    def write(self, path, text):
        file = self.root / path.lstrip("/")
        file.write_bytes(text if isinstance(text, bytes) else text.encode())

    def name_servers(self, *servers):
        self.write("/etc/resolv.conf", "".join(f"nameserver {server}\n" for server in servers))


@pytest.fixture
def device(tmp_path):
    announcement = tmp_path / "announcement"
    os.mkfifo(announcement)
    with subprocess.Popen([PROJECT / "lab/laboratory", "cat"], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                          env={**os.environ, "LAB_ANNOUNCE": str(announcement)}) as holder:
        yield Device(announcement.read_text())
        holder.stdin.close()


@pytest.fixture
def online(device):
    """A device whose name servers and web servers all do what they should."""
    device.dns(right_answer)
    device.web([page()])
    return device
