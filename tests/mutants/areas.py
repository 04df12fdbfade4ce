# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""What is mutated, and which test programs judge it."""

import re
from dataclasses import dataclass, field

CLIENT_TESTS = {f"client-{name}-test": f"tests/client/client-{name}-test" for name in (
    "settings", "exchange", "request", "response", "number", "hostile-answers", "spending-model",
    "spending-properties")}
HOST_TESTS = {f"test-host-{name}": f"tests/host/services/test-host-{name}" for name in (
    "config", "database", "queue", "delivery", "damage", "storagefault", "rest")}


@dataclass(frozen=True)
class Area:
    name: str
    files: re.Pattern
    programs: dict = field(hash=False)
    control: str  # a file of it, with which the tests must pass as it is
    # made anew with the mutant in it and loaded before the one that the programs are linked with
    shared_library: str = ""
    # the module and those who load it judge what the programs let pass
    has_module: bool = False


AREAS = (
    Area("client", re.compile(r"(client|plugin)/.*\.(cpp|h)"),
         {**CLIENT_TESTS, "test-plugin": "tests/plugin/test-plugin"},
         "client/transport.cpp", has_module=True),
    Area("host", re.compile(
        r"host/services/(config|knownkeys|secretfile|database|statement|transaction|dbqueue|delivery|"
        r"outgoingqueue|queue|filelock|restclient|curlpool|transport|connectionprobe)\w*\.cpp"),
         HOST_TESTS, "host/services/statement.cpp", shared_library="host/libposhost.so"),
    Area("till", re.compile(
        r"till/(amount|cashdesk|check(codec|fields|file|soundness|store)?|documentstream|"
        r"impactapplier|ledger|pointschoice|returnlines|storedvalues)\w*\.cpp"),
         {"test-till": "tests/till/test-till"}, "till/amount.cpp"),
    Area("recording", re.compile(r"till/recording/(documentjson|valuejson|recorder|"
                                 r"recordingtransport|recordingconfig|recordingbroker)\.cpp"),
         {"test-recording": "tests/recording/test-recording"}, "till/recording/valuejson.cpp"),
    Area("simulator", re.compile(r"simulator/(amount|checkdesk|granting|ledger|payment|"
                                 r"returnbooking|salebooking)\.cpp"),
         {"simulator-test": "tests/simulator/simulator-test"}, "simulator/amount.cpp"),
)


def area_of(name):
    return next((area for area in AREAS if area.files.fullmatch(name)), None)
