#!/usr/bin/env python3
# A loopback stand-in for the service the real `claude` program talks to, for the benchmarks
# that time the real program: it answers every request for a message at once with the same
# short streamed answer, the way the service streams one. It listens on 127.0.0.1 only, on a
# free port it prints on its first line, and stops when its standard input closes.
#
#   standin.py            (then: ANTHROPIC_BASE_URL=http://127.0.0.1:PORT claude ...)
import http.server
import json
import sys
import threading

ANSWER = "The parcel is ready."


def events(model):
    yield "message_start", {"type": "message_start", "message": {
        "id": "msg_standin", "type": "message", "role": "assistant", "model": model,
        "content": [], "stop_reason": None, "stop_sequence": None,
        "usage": {"input_tokens": 10, "output_tokens": 1}}}
    yield "content_block_start", {"type": "content_block_start", "index": 0,
                                  "content_block": {"type": "text", "text": ""}}
    words = ANSWER.split(" ")
    for i, word in enumerate(words):
        piece = word if i == len(words) - 1 else word + " "
        yield "content_block_delta", {"type": "content_block_delta", "index": 0,
                                      "delta": {"type": "text_delta", "text": piece}}
    yield "content_block_stop", {"type": "content_block_stop", "index": 0}
    yield "message_delta", {"type": "message_delta",
                            "delta": {"stop_reason": "end_turn", "stop_sequence": None},
                            "usage": {"output_tokens": len(words)}}
    yield "message_stop", {"type": "message_stop"}


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *args):
        pass

    def reply(self, kind, data):
        self.send_response(200 if data is not None else 404)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(data or b"")))
        self.end_headers()
        self.wfile.write(data or b"")

    def do_HEAD(self):
        self.reply("text/plain", None)

    do_GET = do_HEAD

    def do_POST(self):
        length = int(self.headers.get("Content-Length", 0))
        body = json.loads(self.rfile.read(length) or b"{}")
        model = body.get("model", "")
        if not self.path.startswith("/v1/messages") or "count_tokens" in self.path:
            self.reply("application/json", json.dumps({"input_tokens": 10}).encode())
        elif body.get("stream"):
            self.reply("text/event-stream", b"".join(
                f"event: {name}\ndata: {json.dumps(data)}\n\n".encode()
                for name, data in events(model)))
        else:
            self.reply("application/json", json.dumps({
                "id": "msg_standin", "type": "message", "role": "assistant", "model": model,
                "content": [{"type": "text", "text": ANSWER}], "stop_reason": "end_turn",
                "stop_sequence": None, "usage": {"input_tokens": 10, "output_tokens": 4}}).encode())


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
print(server.server_address[1], flush=True)
threading.Thread(target=server.serve_forever, daemon=True).start()
sys.stdin.read()
