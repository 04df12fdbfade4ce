# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""What is mutated, and which test programs judge it."""

import re
from dataclasses import dataclass, field

CLIENT_TESTS = {f"client-{name}-test": f"tests/unit/client/client-{name}-test" for name in (
    "settings", "exchange", "request", "response", "number", "hostile-answers", "spending-model",
    "spending-properties")}
HOST_TESTS = {f"test-host-{name}": f"tests/unit/host/{folder}/test-host-{name}" for name, folder in (
    ("config", "config"), ("database", "database"), ("queue", "queue"), ("delivery", "queue"),
    ("damage", "queue"), ("storagefault", "database"), ("rest", "http"))}


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
         {**CLIENT_TESTS, "test-plugin": "tests/unit/plugin/test-plugin"},
         "client/transport.cpp", has_module=True),
    Area("host", re.compile(
        r"host/(config|database|http|queue)/\w+\.cpp|"
        r"host/services/(config|dbqueuebroker|restclient)\.cpp"),
         HOST_TESTS, "host/database/statement.cpp", shared_library="host/libposhost.so"),
    Area("till", re.compile(
        r"till/(checks/\w+|desk/(cashdesk|impactapplier)\w*|screen/ledger)\.cpp"),
         {"test-till": "tests/unit/till/test-till",
          "test-recording": "tests/unit/till/recording/test-recording",
          "test-sharing": "tests/unit/till/sharing/test-sharing"}, "till/checks/amount.cpp"),
    Area("recording", re.compile(r"till/recording/(documentjson|valuejson|recorder|"
                                 r"recordingtransport|recordingconfig|recordingbroker)\.cpp"),
         {"test-recording": "tests/unit/till/recording/test-recording"}, "till/recording/valuejson.cpp"),
    Area("simulator", re.compile(r"simulator/(documents/amount|ledger/(checkdesk|ledger|payment|"
                                 r"returnbooking|salebooking)|rules/granting)\.cpp"),
         {"simulator-test": "tests/unit/simulator/simulator-test"}, "simulator/documents/amount.cpp"),
)


def area_of(name):
    return next((area for area in AREAS if area.files.fullmatch(name)), None)
