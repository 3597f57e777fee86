"""A proxy on this machine that has every page of the world and writes down what it is asked for, and with which headers.

With it the machine is on line to the program, which then reports its errors.
"""
import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from pathlib import Path


def start_proxy(requests: Path) -> str:
    """Starts it for as long as this process lives and returns its address; `requests` is the file that it writes to."""
    requests.touch()

    class Page(BaseHTTPRequestHandler):
        def do_GET(self):
            with requests.open("a") as log:
                page = self.path.replace(":80/", "/")  # the port that a page has without saying so
                log.write(f"GET {page} by {self.headers['User-Agent']}\n")
            with requests.with_name("headers.txt").open("a") as log:
                log.writelines(f"{name}: {text}\n" for name, text in self.headers.items())
            self.send_response(200)
            self.send_header("Content-Length", "2")
            self.end_headers()
            self.wfile.write(b"ok")

        def log_message(self, *_):
            pass

    server = ThreadingHTTPServer(("127.0.0.1", 0), Page)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return f"127.0.0.1:{server.server_port}"
