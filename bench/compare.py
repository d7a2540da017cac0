"""Times mova and ffmpeg on the same inputs, one process of each in turn, and prints a table."""

import os
import statistics
import sys
import tempfile
import time

MOVA = os.environ.get("MOVA", "build/release/bin/mova")
FIRST = ["The tide had turned before", "Nobody in the café looked up", "We were told to wait here", "Did you hear the bell?"]
SECOND = ["the captain came on deck.", "when the train went by.", "until the lamps were lit.", "No, it was the wind."]


def clock(milliseconds):
    seconds, milliseconds = divmod(milliseconds, 1000)
    return "%02d:%02d:%02d,%03d" % (seconds // 3600, seconds // 60 % 60, seconds % 60, milliseconds)


def programme(captions):
    for number in range(captions):
        start = 1000 + 2500 * number
        first = FIRST[number % 4]
        if number % 7 == 0:
            first = "<i>" + first + "</i>"
        times = clock(start) + " --> " + clock(start + 2000)
        yield "%d\r\n%s\r\n%s\r\n%s\r\n\r\n" % (number + 1, times, first, SECOND[number // 3 % 4])


def run(command):
    """Processor seconds, wall seconds and peak MiB of one run."""
    begin = time.monotonic()
    process = os.posix_spawn(
        command[0],
        command,
        os.environ,
        file_actions=[(os.POSIX_SPAWN_OPEN, 1, os.devnull, os.O_WRONLY, 0), (os.POSIX_SPAWN_DUP2, 1, 2)],
    )
    _, status, usage = os.wait4(process, 0)
    if os.waitstatus_to_exitcode(status) != 0:
        sys.exit("failed: " + " ".join(command))
    return usage.ru_utime + usage.ru_stime, time.monotonic() - begin, usage.ru_maxrss / 1024


def compare(title, ours, theirs, runs):
    results = ([], [])
    for turn in range(runs + 1):
        for side, command in zip(results, (ours, theirs)):
            measured = run(command)
            if turn > 0:  # the first turn warms up
                side.append(measured)
    (our_cpu, our_wall, our_peak), (their_cpu, their_wall, their_peak) = (
        [statistics.median(column) for column in zip(*side)] for side in results
    )
    ratio = statistics.median(b[0] / a[0] for a, b in zip(*results))
    print(
        "| %-32s | %8.1f | %8.1f | %6.1fx | %8.1f | %8.1f | %6.1f | %6.1f |"
        % (title, our_cpu * 1e3, their_cpu * 1e3, ratio, our_wall * 1e3, their_wall * 1e3, our_peak, their_peak)
    )


def main():
    runs = int(sys.argv[1])
    ffmpeg = next(p + "/ffmpeg" for p in os.environ["PATH"].split(":") if os.access(p + "/ffmpeg", os.X_OK))
    with tempfile.TemporaryDirectory() as folder:
        print("Medians of %d runs each, in turn. Times in milliseconds, peak memory in MiB." % runs)
        print("| conversion                       | mova cpu |  ff. cpu |  ratio  | mova wal | ff. wall |  peak  | ff. pk |")
        print("|---|---|---|---|---|---|---|---|")
        for captions in (1500, 100000):
            source = "%s/%d.srt" % (folder, captions)
            with open(source, "w", encoding="utf-8", newline="") as file:
                file.writelines(programme(captions))
            for target, extension, codec in (("SubRip", "srt", "subrip"), ("WebVTT", "vtt", "webvtt")):
                ours = [MOVA, "convert", source, "--to", target, "--output", "%s/ours.%s" % (folder, extension), "--quiet"]
                theirs = [ffmpeg, "-nostdin", "-y", "-v", "error", "-i", source, "-c:s", codec, "%s/theirs.%s" % (folder, extension)]
                compare("%d captions, SubRip to %s" % (captions, target), ours, theirs, runs)
        ours = [MOVA, "formats"]
        compare("start (formats; ffmpeg -version)", ours, [ffmpeg, "-version"], runs)


if __name__ == "__main__":
    main()
