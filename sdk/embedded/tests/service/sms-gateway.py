"""A gateway for text messages on a free port of the loopback. Says its port, then each request as one line of JSON."""

import http.server
import json
import sys
import threading


class Gateway(http.server.BaseHTTPRequestHandler):
    def do_POST(self):
        length = int(self.headers.get("Content-Length", "0"))
        body = self.rfile.read(length).decode()
        print(json.dumps({"path": self.path, "body": body, "type": self.headers.get("Content-Type"),
                          "authorization": self.headers.get("Authorization")}), flush=True)
        if self.path == "/hang":
            threading.Event().wait()
        elif self.path == "/garbage":
            self.wfile.write(b"\x00\xff\x00 not a word of HTTP\n")
        elif self.path == "/cut":
            self.wfile.write(b"HTTP/1.1 20")
        elif self.path == "/redirect":
            self.send_response(302)
            self.send_header("Location", "/200")
            self.end_headers()
        else:
            self.send_response(int(self.path[1:]))
            self.end_headers()
            self.wfile.write(b"{}")

    def log_message(self, *arguments):
        pass


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True


server = Server(("127.0.0.1", 0), Gateway)
print(server.server_port, flush=True)
threading.Thread(target=server.serve_forever, daemon=True).start()
# Ends with whoever started it.
sys.stdin.read()
