"""Times runs over many files against processes that do all of their files themselves, and prints a table."""

import os
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

from compare import programme

DIFFERENT_FILES = 50  # the others are links to these


def make_inputs(folder, count):
    os.mkdir(folder)
    names = ["%s/%05d.srt" % (folder, number) for number in range(count)]
    for number, name in enumerate(names):
        if number < DIFFERENT_FILES:
            with open(name, "w", encoding="utf-8", newline="") as file:
                file.writelines(programme(1500 + number))
        else:
            os.link(names[number % DIFFERENT_FILES], name)
    return names


def measure(commands, outputs):
    """Wall and processor seconds of commands that run at the same time."""
    shutil.rmtree(outputs, ignore_errors=True)
    os.mkdir(outputs)
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    begin = time.monotonic()
    for process in [subprocess.Popen(command) for command in commands]:
        if process.wait() != 0:
            sys.exit("failed: " + " ".join(process.args[:4]))
    wall = time.monotonic() - begin
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return wall, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def main():
    mova, one_process, count, runs = sys.argv[1], sys.argv[2], int(sys.argv[3]), int(sys.argv[4])
    cores = len(os.sched_getaffinity(0))
    with tempfile.TemporaryDirectory() as folder:
        names = make_inputs(folder + "/in", count)
        outputs = folder + "/out"
        alone = [[one_process, outputs, "WebVTT"] + names[core::cores] for core in range(cores)]
        batch = [[mova, "convert", folder + "/in", "--recursive", "--to", "WebVTT", "--output-dir", outputs, "--quiet"]]
        results = []
        for turn in range(runs + 1):
            pair = measure(alone, outputs), measure(batch, outputs)
            if turn > 0:  # the first turn warms up
                results.append(pair)
    (alone_wall, alone_cpu), (batch_wall, batch_cpu) = (
        [statistics.median(column) for column in zip(*side)] for side in zip(*results)
    )
    print("%d files on %d cores, medians of %d runs in turn; seconds." % (count, cores, runs))
    print("|                          |   wall | processor | files/s |")
    print("|---|---|---|---|")
    print("| in one process each core | %6.2f | %9.2f | %7.0f |" % (alone_wall, alone_cpu, count / alone_wall))
    print("| mova convert             | %6.2f | %9.2f | %7.0f |" % (batch_wall, batch_cpu, count / batch_wall))
    ratio = statistics.median(a[0] / b[0] for a, b in results)
    print("%.0f %% of what the cores give (%.0f %% by processor time)" % (100 * ratio, 100 * alone_cpu / batch_cpu))


if __name__ == "__main__":
    main()
