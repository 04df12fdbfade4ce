#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""What the trial of servers says of TLS: tls.py BUILD-FOLDER

Tries the simulator behind certificates and versions that are right or wrong, and the simulator's own TLS. Prints a
line each; the exit code is 1 where the trial says anything else than it should."""

import os
import shutil
import socket
import ssl
import subprocess
import sys
import tempfile
import threading
import warnings

sys.dont_write_bytecode = True
import measure  # beside this file

OPENSSL = """[req]
distinguished_name = name
[name]
[authority]
basicConstraints = critical, CA:TRUE
[server]
basicConstraints = critical, CA:FALSE
subjectAltName = DNS:localhost
[elsewhere]
basicConstraints = critical, CA:FALSE
subjectAltName = DNS:shop.example
"""
WAITS = 30
PIECE = 65536


def certify(folder, name, kind, issuer=None):
    """Makes NAME.pem and NAME.key, signed by the issuer or by itself."""
    signed = ["-CA", f"{issuer}.pem", "-CAkey", f"{issuer}.key"] if issuer else []
    subprocess.run(["openssl", "req", "-x509", "-config", "openssl.cnf", "-extensions", kind, "-newkey", "ec",
                    "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2", "-subj", f"/CN={name}",
                    "-keyout", f"{name}.key", "-out", f"{name}.pem", *signed],
                   cwd=folder, check=True, capture_output=True, timeout=WAITS)


def join(folder, name, *parts):
    with open(os.path.join(folder, name), "wb") as whole:
        for part in parts:
            with open(os.path.join(folder, part), "rb") as file:
                shutil.copyfileobj(file, whole)


def make_certificates(folder):
    measure.write(folder, "openssl.cnf", OPENSSL)
    certify(folder, "root", "authority")
    certify(folder, "between", "authority", "root")
    certify(folder, "server", "server", "between")
    certify(folder, "elsewhere", "elsewhere", "between")
    certify(folder, "stranger", "server")
    join(folder, "chain.pem", "server.pem", "between.pem")
    join(folder, "elsewhere-chain.pem", "elsewhere.pem", "between.pem")


class Front:
    """Speaks TLS before a server that does not."""

    def __init__(self, backend, certificate, key, oldest=ssl.TLSVersion.TLSv1_2):
        self.backend = backend
        self.context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        if oldest < ssl.TLSVersion.TLSv1_2:
            self.context.set_ciphers("DEFAULT:@SECLEVEL=0")
        with warnings.catch_warnings():
            warnings.simplefilter("ignore", DeprecationWarning)
            self.context.minimum_version = oldest  # an old one is what a wrong server is for
        self.context.load_cert_chain(certificate, key)
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.address = f"https://localhost:{self.listener.getsockname()[1]}/"
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            try:
                plain, _ = self.listener.accept()
            except OSError:
                return  # closed
            threading.Thread(target=self.serve, args=(plain,), daemon=True).start()

    def serve(self, plain):
        try:
            plain.settimeout(WAITS)
            with self.context.wrap_socket(plain, server_side=True) as client, \
                    socket.create_connection(("127.0.0.1", self.backend), timeout=WAITS) as server:
                threading.Thread(target=self.pump, args=(client, server), daemon=True).start()
                self.pump(server, client)
        except OSError:
            plain.close()  # a client that did not like what it was shown

    @staticmethod
    def pump(source, target):
        try:
            while piece := source.recv(PIECE):
                target.sendall(piece)
            target.shutdown(socket.SHUT_WR)
        except OSError:
            return  # one of the two has gone

    def close(self):
        self.listener.close()


class Simulator:
    """The sound server, with rules of its own if any are given."""

    def __init__(self, build, folder, name, rules=None):
        config = ["--config", measure.write(folder, f"{name}.toml", rules)] if rules else []
        self.process = subprocess.Popen(
            [f"{build}/bin/orva-simulator", "--port", "0", "--quiet", "--database", f"{folder}/{name}.sqlite", *config],
            stdout=subprocess.PIPE, text=True, env=dict(os.environ, LC_ALL="C.UTF-8"))
        self.port = int(self.process.stdout.readline().split()[-1].rstrip("/").rsplit(":", 1)[1])

    def close(self):
        self.process.terminate()
        self.process.wait()
        self.process.stdout.close()


def states(build, address, authority, names):
    """Case by case what the trial says of a server, and what it got where that was wrong."""
    with tempfile.TemporaryDirectory(prefix="orva-tls-") as folder:
        config = measure.settings(build, folder, address, authority)
        result = measure.tried_at(build, address, config, names)
    return {case["name"]: case["state"] for row in result["requirements"] for case in row["cases"]}


def judge(title, said, wanted):
    right = said == wanted
    print(f"{title}: {said}" + ("" if right else f", and should say {wanted}"), flush=True)
    return right


def tls_cases(certificate, version):
    return {"tls.certificate": certificate, "tls.no-older-version": version}


def fronts(folder, port):
    """What a server shows, and what the trial is to say of it."""
    def here(name):
        return os.path.join(folder, name)
    old = ssl.TLSVersion.TLSv1_1
    return [
        ("whole chain", Front(port, here("chain.pem"), here("server.key")), tls_cases("held", "held")),
        ("chain with a gap", Front(port, here("server.pem"), here("server.key")), tls_cases("broken", "held")),
        ("another name", Front(port, here("elsewhere-chain.pem"), here("elsewhere.key")),
         tls_cases("broken", "held")),
        ("signed by itself", Front(port, here("stranger.pem"), here("stranger.key")), tls_cases("broken", "held")),
        ("TLS 1.1 too", Front(port, here("chain.pem"), here("server.key"), old), tls_cases("held", "broken")),
        ("a gap and TLS 1.1", Front(port, here("server.pem"), here("server.key"), old),
         tls_cases("broken", "broken"))]


def tried_all(build, folder):
    root = os.path.join(folder, "root.pem")
    plain = Simulator(build, folder, "plain")
    rules = subprocess.run([f"{build}/bin/orva-simulator", "rules"], check=True, capture_output=True, text=True).stdout
    own = Simulator(build, folder, "own", rules + '\n[tls]\ncertificate = "chain.pem"\nkey = "server.key"\n')
    right = []
    try:
        for title, front, wanted in fronts(folder, plain.port):
            right.append(judge(title, states(build, front.address, root, ["tls"]), wanted))
            front.close()
        sale = {"status-tells.confirmation": "held"}
        right.append(judge("the simulator's own", states(build, f"https://localhost:{own.port}/", root,
                                                         ["tls", *sale]), tls_cases("held", "held") | sale))
    finally:
        plain.close()
        own.close()
    return right


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with tempfile.TemporaryDirectory(prefix="orva-tls-") as folder:
        make_certificates(folder)
        right = tried_all(os.path.abspath(sys.argv[1]), folder)
    print(f"servers with TLS: {len(right)}, of which judged rightly: {sum(right)}")
    return 0 if all(right) else 1


if __name__ == "__main__":
    sys.exit(main())
