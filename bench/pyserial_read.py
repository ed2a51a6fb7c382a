#!/usr/bin/env python3
"""Exchanges lines with a serial device by way of pyserial, as a short script does it.

Usage: pyserial_read.py DEVICE

The standard input says what is exchanged, "COUNT LINE" each: LINE is sent, then COUNT bytes of its reply are
awaited, from its start character on.
"""
import sys

import serial

LIMIT_S = 2
START = b"#!^"


def exchange(port, line, count):
    port.reset_input_buffer()
    port.write(line)
    first = port.read(1)
    while first and first not in START:  # the rest of an earlier reply
        first = port.read(1)
    reply = first + port.read(count - 1)
    if len(reply) < count:
        sys.exit(f"no reply to {line!r}")


with serial.Serial(sys.argv[1], 19200, timeout=LIMIT_S) as port:
    for text in sys.stdin:
        count, line = text.rstrip("\n").split(" ", 1)
        exchange(port, line.encode("latin-1") + b"\r\n", int(count))
