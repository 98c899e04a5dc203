"""Runs a program and captures what it prints, in files: the first program under Wine may start Wine's own processes,
which would keep a pipe open long after the program has ended."""

import subprocess
import tempfile


def run(command, check=False, **options):
    """Like subprocess.run with capture_output=True."""
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        done = subprocess.run(command, stdout=output, stderr=errors, check=False, **options)
        output.seek(0)
        errors.seek(0)
        done = subprocess.CompletedProcess(done.args, done.returncode, output.read(), errors.read())
    if check:
        done.check_returncode()
    return done


def printed(command, **options):
    """The exit status and what the program prints, the errors behind the output, with LF as line ends."""
    done = run(command, **options)
    return done.returncode, (done.stdout + done.stderr).decode("utf-8").replace("\r\n", "\n")
