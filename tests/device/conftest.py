"""A simulated device for each test, and scripted servers on the Internet side of it."""

import contextlib
import ctypes
import hashlib
import os
import select
import socket
import struct
import subprocess
import threading
import time
from collections import namedtuple
from pathlib import Path

import pytest

PROJECT = Path(__file__).resolve().parents[2]
os.environ.setdefault("TOLVANE", str(PROJECT / "build/native/tolvane"))

# A sanitizer or an emulator needs descriptors, processes and files, such as those of /proc, of its own.
unhosted = pytest.mark.skipif("TOLVANE_HOSTED" in os.environ, reason="would limit the program's host more")

NAME_SERVERS = ["198.51.100.53", "2001:db8:53::53"]
WEB_SERVERS = ["203.0.113.80", "2001:db8:80::80"]
A = 1
AAAA = 28
RESET = object()  # a step of a web script: end the connection with a reset

Result = namedtuple("Result", "code out err seconds cpu")
Query = namedtuple("Query", "server address port message")


DATE = b"2026-11-22 12:00:00"


def document(checksum):
    return (
        b'<?xml version="1.0" encoding="UTF-8"?>\n'
        b'<tolvane date="%s">\n\t<checksum>%s</checksum>\n</tolvane>\n'
    ) % (DATE, checksum.encode())


HEAD = b"HTTP/1.0 200 OK\r\nContent-Type: text/xml\r\n\r\n"
DOCUMENT = document(hashlib.md5(DATE).hexdigest())
GOOD_PAGE = HEAD + DOCUMENT
BAD_PAGE = HEAD + document("0" * 32)


def record(kind, data, owner=b"\xc0\x0c"):
    return owner + struct.pack(">HHIH", kind, 1, 60, len(data)) + data


def response(query, *records):
    header = struct.pack(">HHHHHH", 0x4242, 0x8183, 1, len(records), 0, 0)
    return header + query[12:] + b"".join(records)


# Steps of a name server: functions of a query and the type it asks for that give a datagram.
def no_record(query, _kind):
    return response(query)


def leading_to(ipv4, ipv6):
    def step(query, kind):
        if kind == A:
            return response(query, record(A, socket.inet_pton(socket.AF_INET, ipv4)))
        return response(query, record(AAAA, socket.inet_pton(socket.AF_INET6, ipv6)))

    return step


right_answer = leading_to(*WEB_SERVERS)


class Device:
    def __init__(self, announced):
        self.pid, self.network = announced.split()
        self.servers = f"/proc/{self.pid}/ns/net"
        self.root = Path(f"/proc/{self.pid}/root/mnt/device")
        self.result_file = self.root / "tmp/tolvaneresult"
        self.queries = []
        self.requests = []

    def command(self, *words, limit=60):
        """Runs a command on the device for at most `limit` seconds."""
        command = ["nsenter", "-t", self.pid, "-m", "-p", "-r", f"--net={self.network}"]
        command += ["chroot", "/mnt/device", "env", "-i", "PATH=/sbin:/bin"]
        command += [f"{name}={value}" for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")]
        command += words
        before = os.times()
        done = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, timeout=limit, encoding="latin-1")
        after = os.times()
        cpu = after.children_user + after.children_system - before.children_user - before.children_system
        return Result(done.returncode, done.stdout, done.stderr, after.elapsed - before.elapsed, cpu)

    def change(self, command):
        """Runs a shell command that prepares the device."""
        done = self.command("sh", "-c", command)
        assert done.code == 0, done

    def run(self, *arguments, shell=None):
        """Runs the checker; `shell` is a command line in which `"$@"` stands for it."""
        prefix = ["sh", "-c", shell, "sh"] if shell else []
        run = self.command(*prefix, "tolvane", *arguments)
        assert run.err == ""
        return run

    def run_each(self, commands, options):
        """Runs the checker once after each shell command. Returns statuses, printed lines, words of the result file."""
        run = f"tolvane -d {options}; printf '\\f%d\\f' $?; cat /tmp/tolvaneresult; printf '\\f'\n"
        self.write("/sbin/cases", "".join(f"{command}\n{run}" for command in commands))
        words = self.command("sh", "-c", ". cases 2>/dev/null", limit=300).out.split("\f")
        return [(int(code), out, stored.split()) for out, code, stored in zip(words[::3], words[1::3], words[2::3])]

    def write(self, path, text):
        (self.root / path.lstrip("/")).write_text(text, encoding="latin-1")

    def install(self, path, script):
        """Puts a script in place of a tool."""
        self.change(f"rm -f {path}; touch {path}; chmod 755 {path}")
        self.write(path, script)

    def name_servers(self, *servers):
        self.write("/etc/resolv.conf", "".join(f"nameserver {server}\n" for server in servers))

    def add_to_internet(self, *words):
        """Adds an address or a route; the words are those of ip(8)."""
        subprocess.run(["nsenter", "-t", self.pid, "-n", "ip", *words], check=True)

    def listen(self, address, port, kind, serve):
        """Starts a server thread in the network of the servers, to which its socket then belongs."""
        ready = threading.Event()

        def work():
            with open(self.servers) as network:
                assert ctypes.CDLL(None).setns(network.fileno(), 0) == 0
            family, _, _, _, target = socket.getaddrinfo(address, port, type=kind)[0]
            listener = socket.socket(family, kind)
            while True:
                with contextlib.suppress(OSError):  # the kernel has still to make an IPv6 address usable
                    listener.bind(target)
                    break
                time.sleep(0.05)
            if kind == socket.SOCK_STREAM:
                listener.listen()
            ready.set()
            while True:
                with contextlib.suppress(OSError):  # the client is gone
                    serve(listener, address)

        threading.Thread(target=work, daemon=True).start()
        assert ready.wait(5)

    def dns(self, *steps, servers=NAME_SERVERS):
        """Answers each query by the steps: a number waits, a function of (query, type) gives a datagram."""

        def serve(listener, server):
            query, client = listener.recvfrom(65536)
            kind = query[-3]  # the query ends with its type and class
            self.queries.append(Query(server, client[0], client[1], query))
            for step in steps:
                if callable(step):
                    listener.sendto(step(query, kind), client)
                else:
                    time.sleep(step)

        for server in servers:
            self.listen(server, 53, socket.SOCK_DGRAM, serve)

    def web(self, *scripts, servers=WEB_SERVERS):
        """The n-th connection follows the n-th script, later ones the last: bytes to send, seconds to wait, RESET."""

        def serve(listener, _server):
            connection, _client = listener.accept()
            threading.Thread(target=handle, args=[connection], daemon=True).start()

        def handle(connection):
            script = scripts[min(len(self.requests), len(scripts) - 1)]
            self.requests.append(connection.recv(4096))
            with contextlib.suppress(OSError), connection:
                for step in script:
                    if step is RESET:
                        connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
                    elif isinstance(step, bytes):
                        connection.sendall(step)
                    else:
                        time.sleep(step)

        for server in servers:
            self.listen(server, 80, socket.SOCK_STREAM, serve)


@pytest.fixture
def device(tmp_path):
    errors = tmp_path / "errors"
    reader, writer = os.pipe()
    with errors.open("w") as stderr, open(reader) as announcement, subprocess.Popen(
        [PROJECT / "lab/laboratory", "cat"],
        env={**os.environ, "LAB_ANNOUNCE": str(writer)},
        pass_fds=[writer],
        stdin=subprocess.PIPE,
        stdout=subprocess.DEVNULL,
        stderr=stderr,
    ) as laboratory:
        os.close(writer)
        ready, _, _ = select.select([announcement], [], [], 60)
        announced = announcement.readline() if ready else ""
        if announced:
            yield Device(announced)
        laboratory.kill()  # and with it everything in its namespaces
    if not announced:
        pytest.fail(errors.read_text() or "The laboratory is not ready after a minute.", pytrace=False)


@pytest.fixture
def online(device):
    """A device whose name servers and web servers all do what they should."""
    device.dns(right_answer)
    device.web([GOOD_PAGE])
    return device
