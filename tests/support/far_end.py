#!/usr/bin/env python3
"""The far end of a serial line without hardware: far_end.py LINK [COMMAND...]

LINK is laid to the device to open. Runs the command with the number of a port of this computer in KARVO_FAR_END, or prints
that number and stays. Whoever connects there leads the far end by lines, and gets a line for each: "plug-in", "pull-out MS",
"send MS 00..FF 07" (both wait before they act, and before each further piece), "take COUNT" (the bytes that came within two
seconds), "line" (rate and stop bits as the program has set them).
"""

import os
import select
import socketserver
import subprocess
import sys
import termios
import threading
import time
import tty

RATES = {getattr(termios, f"B{rate}"): rate for rate in (2400, 4800, 9600, 19200, 38400, 57600, 115200)}


class FarEnd:
    def __init__(self, link):
        self.link = link
        self.ends = ()  # of a pseudo terminal: ours, and the device, or closing it would count as a hang-up of its own

    def plug_in(self):
        self.pull_out()
        self.ends = os.openpty()
        tty.setraw(self.ends[1])
        os.symlink(os.ttyname(self.ends[1]), self.link)

    def pull_out(self):
        if os.path.lexists(self.link):
            os.unlink(self.link)
        for end in self.ends:
            os.close(end)
        self.ends = ()

    def take(self, count):
        taken = b""
        until = time.monotonic() + 2
        while len(taken) < count and select.select([self.ends[0]], [], [], max(0, until - time.monotonic()))[0]:
            taken += os.read(self.ends[0], 4096)
        return taken.hex()

    def line(self):
        _, _, control, _, _, rate, _ = termios.tcgetattr(self.ends[0])
        return f"{RATES.get(rate, 'another')} {2 if control & termios.CSTOPB else 1}"


class Lead(socketserver.StreamRequestHandler):
    def handle(self):
        far_end = self.server.far_end
        for line in self.rfile:
            command, *words = line.decode().split()
            if command == "take":
                self.answer(far_end.take(int(words[0])))
            elif command == "line":
                self.answer(far_end.line())
            elif command == "plug-in":
                far_end.plug_in()
                self.answer("done")
            else:
                self.answer("soon")
                for piece in words[1:] or [""]:
                    time.sleep(int(words[0]) / 1000)
                    if command == "send":
                        os.write(far_end.ends[0], bytes(range(int(piece[:2], 16), int(piece[-2:], 16) + 1)))
                    else:
                        far_end.pull_out()
        far_end.pull_out()

    def answer(self, text):
        self.wfile.write(f"{text}\n".encode())


with socketserver.TCPServer(("127.0.0.1", 0), Lead) as server:
    server.far_end = FarEnd(sys.argv[1])
    port = str(server.server_address[1])
    if sys.argv[2:]:
        threading.Thread(target=server.serve_forever, daemon=True).start()
        sys.exit(subprocess.run(sys.argv[2:], env=os.environ | {"KARVO_FAR_END": port}).returncode)
    print(port, flush=True)
    server.serve_forever()
