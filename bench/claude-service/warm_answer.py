#!/usr/bin/env python3
# The `claude` program's own warm answer time, as Glimmo uses it: the program started with
# Glimmo's arguments and left waiting, then one request written to it; the time from the
# request to its result record. Prints each run and the median, in seconds.
#
#   warm_answer.py CLAUDE SYSTEM_PROMPT_FILE MODEL RUNS
import json
import statistics
import subprocess
import sys
import time

claude, prompt_file, model, runs = sys.argv[1], sys.argv[2], sys.argv[3], int(sys.argv[4])
prompt = open(prompt_file, encoding="utf-8").read()
arguments = [claude, "-p", "--model", model, "--no-session-persistence", "--setting-sources", "",
             "--strict-mcp-config", "--tools", "", "--input-format", "stream-json",
             "--output-format", "stream-json", "--verbose", "--include-partial-messages",
             "--system-prompt", prompt]
request = json.dumps({"type": "user", "message": {
    "role": "user", "content": "the parcel number one is ready."}}) + "\n"
times = []
for _ in range(runs):
    process = subprocess.Popen(arguments, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL, text=True)
    time.sleep(3)  # warm: started well before the request, as Glimmo keeps one waiting
    start = time.monotonic()
    process.stdin.write(request)
    process.stdin.close()
    for line in process.stdout:
        if line.startswith('{"type":"result"'):
            times.append(time.monotonic() - start)
            break
    process.wait()
if not times:
    sys.exit("claude gave no result")
print("claude warm answer (s): median %.3f, each: %s" % (
    statistics.median(times), " ".join("%.3f" % t for t in times)))
