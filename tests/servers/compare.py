"""Runs the updater and publish-check against servers of this machine, and prints what came of it.

usage: compare.py [NAME...]          from scripts/servers, which says where everything is

Ends with 1 when a row differs from what has to come of it, or the two programs from each other.
"""
import contextlib
import http.client
import json
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import time

import rows

WORK = pathlib.Path(os.environ["SERVERS_WORK"])
CERTIFICATES = pathlib.Path(os.environ["SERVERS_CERTIFICATES"])
BUILD = pathlib.Path(os.environ["SERVERS_BUILD"])
ANIMATION = pathlib.Path(os.environ["SERVERS_ANIMATION"])
CHECK = os.environ["SERVERS_CHECK"]
UPDATER = os.environ["SERVERS_UPDATER"]
LONGEST_START = 20  # Seconds.


def free_port():
    with socket.socket() as one:
        one.bind(("127.0.0.1", 0))
        return one.getsockname()[1]


def make_folder(folder):
    """A server folder with everything in order."""
    folder.mkdir(parents=True, exist_ok=True)
    shutil.copy(BUILD, folder / "tolvex30.exe")
    shutil.copy(ANIMATION, folder / "filecopy.avi")
    (folder / "LICENSE.TXT").write_text("L" * 5000)
    for file in folder.iterdir():
        os.utime(file, (1580890320, 1580890320))
        file.chmod(0o644)


def listens(port):
    with contextlib.suppress(OSError), socket.create_connection(("127.0.0.1", port), 1):
        return True
    return False


@contextlib.contextmanager
def running(server, place):
    """The server for as long as the block lasts; others first that it stands in front of."""
    with contextlib.ExitStack() as stack:
        behind = stack.enter_context(running(rows.SERVERS[server.behind], place)) \
            if server.behind else None
        folder = WORK / server.name
        shutil.rmtree(folder, ignore_errors=True)
        (folder / "tmp").mkdir(parents=True)
        for each in (WORK, folder, folder / "tmp"):
            each.chmod(0o777)
        make_folder(folder / "www" / "upd")
        place = dict(place, run=folder, www=folder / "www", http=free_port(), https=free_port(),
                     behind=behind, user=rows.USER, password=rows.PASSWORD)
        for name, text in server.files.items():
            (folder / name).write_text(rows.filled(text, place))
        if server.prepare:
            server.prepare(place)
        log = stack.enter_context(open(folder / "log", "w"))
        process = subprocess.Popen([rows.filled(word, place) for word in server.command],
                                   stdin=subprocess.DEVNULL, stdout=log, stderr=log, cwd=folder,
                                   start_new_session=True)
        try:
            end = time.monotonic() + LONGEST_START
            while not listens(place["http"]):
                if process.poll() is not None or time.monotonic() > end:
                    raise RuntimeError(f"{server.name} does not start, see {folder}/log")
                time.sleep(0.1)
            yield place
        finally:
            with contextlib.suppress(ProcessLookupError):
                os.killpg(process.pid, signal.SIGTERM)
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(10)
            with contextlib.suppress(ProcessLookupError):
                os.killpg(process.pid, signal.SIGKILL)


def ask_publish_check(address, proxy):
    environment = dict(os.environ, SSL_CERT_FILE=str(CERTIFICATES / "authority.pem"))
    if proxy:
        environment["http_proxy"] = environment["https_proxy"] = proxy if "//" in proxy else f"http://{proxy}"
    # Without the shell's own: what is on this machine is asked directly.
    environment["no_proxy"] = ""
    done = subprocess.run([CHECK, address, "--installed", "3.0.11.0", "--json"], env=environment,
                          capture_output=True, text=True, timeout=300, check=False)
    if done.returncode == 2:
        return "no-connection", (done.stderr or done.stdout).strip().splitlines()[-1]
    said = json.loads(done.stdout)
    faults = [finding["code"] for finding in said["findings"] if finding["severity"] == "fault"]
    return said["updaters"][0]["outcome"], " ".join(faults)


def ask_updater(address, proxy):
    command = [UPDATER, f"--server={address}"] + ([f"--proxy={proxy}"] if proxy else [])
    done = subprocess.run(command, capture_output=True, text=True, timeout=600, check=False)
    lines = done.stdout.replace("\r", "").splitlines()
    said = dict(line.split(" ", 1) for line in lines
                if line.split(" ", 1)[0] in ("outcome", "staged", "report") and " " in line)
    if "outcome" not in said:
        raise RuntimeError("the updater's run did not end:\n" + done.stdout + done.stderr)
    return said


def row(row, place):
    address = rows.filled(row.address, place)
    proxy = rows.filled(row.proxy, place) if row.proxy else None
    foretold, why = ask_publish_check(address, proxy)
    said = ask_updater(address, proxy)
    wrong = []
    if said["outcome"] != row.outcome:
        wrong.append(f"the updater should say {row.outcome}")
    if foretold != (row.foretold or row.outcome):
        wrong.append(f"publish-check should say {row.foretold or row.outcome}")
    if said["outcome"] == "offered" and said["staged"] != "whole":
        wrong.append("what is offered is not the published build")
    if row.outcome != "offered" and said["staged"] != "nothing" and not row.leaves_part:
        wrong.append("something of a build is on the disk")
    if row.report and row.report not in said.get("report", ""):
        wrong.append(f"the report should say: {row.report}")
    print(f"| {row.server} | {row.what} | {said['outcome']} | {foretold} | "
          f"{said.get('report', '') if row.report else ''} | "
          f"{'; '.join(wrong) if wrong else 'ok'} |", flush=True)
    if wrong:
        print(f"    {why}\n    {said}", file=sys.stderr, flush=True)
    return not wrong


def main(names):
    print("| server | what | updater | publish-check | the report | |\n|---|---|---|---|---|---|")
    good = bad = 0
    for name, server in rows.SERVERS.items():
        mine = [each for each in rows.ROWS if each.server == name]
        if not mine or names and name not in names:
            continue
        place = {"certificates": CERTIFICATES}
        for each in mine:
            place["certificate"] = CERTIFICATES / f"{each.certificate}.pem"
            try:
                with running(server, place) as there:
                    ok = row(each, there)
            except (RuntimeError, OSError, http.client.HTTPException, ValueError,
                    subprocess.TimeoutExpired) as error:
                print(f"| {name} | {each.what} | | | | {error} |", flush=True)
                ok = False
            good, bad = good + ok, bad + (not ok)
    print(f"{good} passed, {bad} failed")
    return 1 if bad else 0


# So that no server outlives a run that is ended early.
signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
sys.exit(main(sys.argv[1:]))
