#!/usr/bin/env python3
"""Writes the seed inputs of the fuzz targets into fuzz/corpus/<target>/.

The layouts are described at the top of receive_fuzz.cpp and tcp_fuzz.cpp.
Run again after changing a layout; the files are small and kept in the tree.
"""
import functools
import os
import sys

STX, ETX, ACK, NAK = b"\x02", b"\x03", b"\x06", b"\x15"


def xor_sum(frame: bytes) -> bytes:
    return bytes([functools.reduce(lambda a, b: a ^ b, frame, 0)])


def printable_sum(frame: bytes) -> bytes:
    return bytes([((sum(frame) - 32) % 95) + 32])


def framed(body: bytes) -> bytes:
    """A frame with its checksum: XOR, or the printable sum for `{` frames."""
    return body + (printable_sum(body) if body[:1] == b"{" else xor_sum(body))


# ---- receive_fuzz ---------------------------------------------------------
# header: flags, config, address, nops, ops...; chunks: h, d, bytes
R_ONE_CHAR, R_PRINTABLE, R_CHECK_ADDR, R_REPLIES_FOLLOW = 0x01, 0x02, 0x04, 0x08
OP_RECEIVE, OP_EXCHANGE, OP_POLL, OP_IDLE = 0, 1, 2, 3


def receive_input(flags, timeout_index, ops, chunks, address=b"A"):
    out = bytes([flags, timeout_index]) + address + bytes([len(ops) - 1]) + bytes(ops)
    for data, delay, coarse, starts_reply in chunks:
        n = 63 if len(data) >= 63 else len(data)
        head = n | (0x40 if starts_reply else 0) | (0x80 if coarse else 0)
        out += bytes([head, delay]) + data
        if n == 63:
            break  # the rest of the input is this chunk
    return out


STATUS = framed(ACK + b"A?PABCDEFGHIJK" + ETX)
SEAL = 0x08  # config bit: the harness appends each chunk's checksum
RECEIVE_SEEDS = {
    # The poll answered 20 ms after the query.
    "ack_status_block": receive_input(
        R_CHECK_ADDR | R_REPLIES_FOLLOW, 6, [OP_POLL],
        [(b"", 0, False, False), (STATUS, 20, False, True)]),
    # Sealed, and the reply is the rest of the input: bytes put in or taken
    # out keep the frame good, so the block's length is free to vary.
    "status_block_sealed": receive_input(
        R_CHECK_ADDR | R_REPLIES_FOLLOW, SEAL | 6, [OP_POLL, OP_POLL],
        [(b"", 0, False, False), (ACK + b"A?PABCDEFGHIJK" + ETX + b"x" * 48, 20, False, True)]),
    "short_block_sealed": receive_input(
        R_ONE_CHAR, SEAL | 0x10 | 6, [OP_POLL, OP_RECEIVE],
        [(ACK + b"A?PABCDEFG" + ETX + ACK + b"A?PABCDEF" + ETX + b"y" * 48, 20, False, False)]),
    "one_char_alarm": receive_input(
        R_ONE_CHAR | R_CHECK_ADDR | R_REPLIES_FOLLOW, SEAL | 6, [OP_POLL],
        [(b"", 0, False, False), (ACK + b"A?PQRSTUVWX" + ETX, 20, False, True)]),
    "nak": receive_input(
        R_CHECK_ADDR | R_REPLIES_FOLLOW, 6, [OP_EXCHANGE | 0x10],
        [(b"", 0, False, False), (framed(NAK + b"A?" + ETX), 15, False, True)]),
    "printable_frame": receive_input(
        R_PRINTABLE | R_CHECK_ADDR | R_REPLIES_FOLLOW, SEAL | 6, [OP_POLL, OP_POLL],
        [(b"", 0, False, False), (b"{A?PABCDEFGHIJK}", 20, False, True),
         (b"{A?P@@@@@@@@@@@}", 30, False, True)]),
    "junk_before_frame": receive_input(
        R_CHECK_ADDR, 5, [OP_RECEIVE, OP_RECEIVE],
        [(b"\xff\x00line noise\r\n}\x03", 0, False, False),
         (STX + b"A{inner}", 100, False, False), (framed(STX + b"A1" + ETX), 1, False, False),
         (b"\x02A late", 10, False, False), (b" tail\x03\x00", 50, True, False)]),
    # A reply cut in two, the second half after the time-out, then read by a
    # second receive.
    "late_half": receive_input(
        R_CHECK_ADDR, 6, [OP_RECEIVE, OP_RECEIVE, OP_IDLE | 0x30, OP_EXCHANGE],
        [(STATUS[:7], 10, False, False), (STATUS[7:], 50, True, False)]),
    # The shortest frames: a start byte, the end byte, the checksum; sealed
    # (config bit3), so the harness appends each chunk's checksum.
    "short_frames_sealed": receive_input(
        0, SEAL | 4, [OP_RECEIVE, OP_RECEIVE, OP_EXCHANGE, OP_RECEIVE],
        [(NAK + ETX, 5, False, False), (ACK + ETX, 5, False, False),
         (b"{}", 5, False, False), (STX + b"A{" + ETX, 5, False, False)]),
    "huge_frame": receive_input(
        0, 7, [OP_RECEIVE, OP_RECEIVE],
        [(STX + b"A" + b"x" * 16400 + ETX + b"\x00", 0, False, False)]),
}

# ---- tcp_fuzz -------------------------------------------------------------
# header: flags, nex, ex...; events: h (kind << 5 | n), d, ...
T_ONE_CHAR, T_TRACE = 0x08, 0x10
EX_POLL = 0x04


def segment(data, delay, crlf=False):
    kind = 2 if crlf else 0
    if len(data) >= 31:
        return bytes([(kind << 5) | 31, delay, len(data) - 31]) + data
    return bytes([(kind << 5) | len(data), delay]) + data


def tcp_input(flags, exchanges, events):
    return bytes([flags, len(exchanges) - 1]) + bytes(exchanges) + b"".join(events)


TCP_REPLY = ACK + b"A?PABCDEFGHIJK" + ETX + b"M"
TCP_SEEDS = {
    "ack_status_cr_split": tcp_input(
        T_TRACE, [EX_POLL],
        [segment(TCP_REPLY[:6], 30), segment(TCP_REPLY[6:], 40, crlf=True)]),
    "nak": tcp_input(0, [0x00], [segment(NAK + b"A" + ETX + b"M", 25, crlf=True)]),
    "junk_then_reply": tcp_input(
        0, [0x01, EX_POLL],
        [segment(b"\x00\xffnoise", 5), segment(ACK + b"A" + ETX + b"M", 20, crlf=True),
         segment(b"stray\r\nafter", 100), segment(TCP_REPLY, 200, crlf=True)]),
    "three_polls_one_lost": tcp_input(
        T_ONE_CHAR, [EX_POLL, EX_POLL | (4 << 3), EX_POLL | (12 << 3)],
        [segment(ACK + b"A?PQRSTUVWX" + ETX + b"M", 30, crlf=True),
         segment(ACK + b"A?PQRSTUVWX" + ETX + b"M", 255, crlf=True)]),
    # The socket drops while a reply is awaited, an error follows, then a
    # connection request is accepted and the next poll runs.
    "close_error_accept": tcp_input(
        0x04, [0x00, EX_POLL | (2 << 3), 0x01 | (8 << 3)],
        [segment(b"\x06A?", 10), bytes([(5 << 5), 3]), bytes([(6 << 5) | 4, 2]),
         bytes([(7 << 5) | 2, 80]), segment(TCP_REPLY, 0, crlf=True)]),
    # A peer that streams bytes and never a CR.
    "babble": tcp_input(
        0, [0x00, 0x04],
        [bytes([(3 << 5) | 16, 5, 200]) + b"0123456789abcdef"]),
    # A line longer than a frame: the text before its CR is cut to a frame.
    "long_line": tcp_input(
        0, [0x01],
        [bytes([(3 << 5) | 16, 1, 70]) + b"0123456789abcdef",
         segment(b"end of a long line", 1, crlf=True)]),
    "starts_closed": tcp_input(0x03, [EX_POLL, 0x01], [bytes([(7 << 5) | 1, 1])]),
}


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    for target, seeds in (("receive_fuzz", RECEIVE_SEEDS), ("tcp_fuzz", TCP_SEEDS)):
        folder = os.path.join(here, "corpus", target)
        os.makedirs(folder, exist_ok=True)
        for name, data in seeds.items():
            with open(os.path.join(folder, name), "wb") as f:
                f.write(data)
        print(f"{target}: {len(seeds)} seeds in {folder}", file=sys.stderr)


if __name__ == "__main__":
    main()
