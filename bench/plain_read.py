#!/usr/bin/env python3
"""Exchanges lines with a serial device, as a plain script does it, and tells how long that took.

Usage: plain_read.py DEVICE

The standard input first says what is exchanged, "COUNT LINE" each: LINE is sent, then COUNT bytes of its reply
are awaited, from its start character on. Each empty line behind these does all of it once and prints the
seconds from the first byte sent to the last one awaited.
"""
import os
import re
import select
import sys
import termios
import time
import tty

LIMIT_S = 2
START = re.compile(rb"[#!^]")


def exchange(device, line, count):
    termios.tcflush(device, termios.TCIFLUSH)
    os.write(device, line)
    reply = b""
    while len(reply) < count:
        if not select.select([device], [], [], LIMIT_S)[0]:
            sys.exit(f"no reply to {line!r}")
        reply += os.read(device, 256)
        # What stands before the start character is the rest of an earlier reply.
        start = START.search(reply)
        reply = reply[start.start():] if start else b""
    return reply[:count]


def read_all(path, exchanges):
    device = os.open(path, os.O_RDWR | os.O_NOCTTY)
    tty.setraw(device)
    begun = time.monotonic()
    for line, count in exchanges:
        exchange(device, line, count)
    took = time.monotonic() - begun
    os.close(device)
    return took


def main():
    exchanges = []
    for text in sys.stdin:
        if text.strip():
            count, line = text.rstrip("\n").split(" ", 1)
            exchanges.append((line.encode("latin-1") + b"\r\n", int(count)))
        else:
            print(read_all(sys.argv[1], exchanges), flush=True)


main()
