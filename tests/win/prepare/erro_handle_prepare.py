"""A proxy that has every page of the world: the machine can be on line, and its errors are reported then. Another one sends
every question elsewhere."""
import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

from tests.harness.proxy import start_proxy


def start_redirecting(requests) -> str:
    requests.touch()

    class Elsewhere(BaseHTTPRequestHandler):
        def do_GET(self):
            with requests.open("a") as log:
                log.write(f"GET {self.path.replace(':80/', '/')}\n")
            self.send_response(302)
            self.send_header("Location", "http://elsewhere.example/")
            self.send_header("Content-Length", "0")
            self.end_headers()

        def log_message(self, *_):
            pass

    server = ThreadingHTTPServer(("127.0.0.1", 0), Elsewhere)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return f"127.0.0.1:{server.server_port}"


def prepare(home) -> dict[str, str]:
    return {"QUELLIX_TEST_PROXY": start_proxy(home.c / "test/requests.txt"),
            "QUELLIX_REDIRECTING_PROXY": start_redirecting(home.c / "test/redirected.txt")}
