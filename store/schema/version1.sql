-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- What is large is only ever added: checks, messages, attempts, outcomes and deliveries, by day. What
-- changes is small: a row for each lane, and one for each lane with work.

CREATE TABLE orva.tills (
    role text PRIMARY KEY,
    shop text NOT NULL);

-- who a queue's messages are sent as
CREATE TABLE orva.accounts (
    id int GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    shop text NOT NULL,
    queue text NOT NULL,
    credentials text NOT NULL,
    paused_status int,
    paused_at timestamptz,
    probe_at timestamptz);
CREATE INDEX accounts_of_shop ON orva.accounts (shop, queue, id);
CREATE INDEX accounts_paused ON orva.accounts (id) WHERE paused_status IS NOT NULL;

-- a queue that waits as a whole
CREATE TABLE orva.holds (
    queue text PRIMARY KEY,
    reason text NOT NULL CHECK (reason IN ('server', 'address')),
    failures int NOT NULL,
    since timestamptz NOT NULL,
    until timestamptz NOT NULL);

-- Messages of one lane are delivered one after another. Its row is locked first by whoever hands over
-- into it and whoever finishes in it, so that none of them overlooks the other.
CREATE TABLE orva.lanes (
    id bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    shop text NOT NULL,
    name bytea,                             -- a digest; null: of one check alone
    waiting int NOT NULL DEFAULT 0,         -- messages in the line; above 0 the lane is ready or delayed
    handed bigint NOT NULL DEFAULT 0,       -- number of the message that came last
    passed bigint NOT NULL DEFAULT 0,       -- number of the message that left the line last
    last_day date NOT NULL,                 -- of the message that came last
    head_day date NOT NULL)                 -- no message in the line has an earlier one
    WITH (fillfactor = 50);
CREATE UNIQUE INDEX lanes_by_name ON orva.lanes (shop, name) WHERE name IS NOT NULL;

-- lanes with work, in the order in which they got it
CREATE TABLE orva.ready (
    position bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    lane bigint NOT NULL,
    account int NOT NULL,
    queue text NOT NULL);

-- lanes whose message waits for a time of its own
CREATE TABLE orva.delayed (
    lane bigint PRIMARY KEY,
    account int NOT NULL,
    queue text NOT NULL,
    due_at timestamptz NOT NULL);
CREATE INDEX delayed_due ON orva.delayed (due_at);

-- messages that are left out until somebody looks at them, or until what they wait for is delivered
CREATE TABLE orva.parked (
    message bigint PRIMARY KEY,
    day date NOT NULL,
    lane bigint NOT NULL,
    number bigint NOT NULL,
    shop text NOT NULL,
    identifier text NOT NULL,
    waits_for text,                         -- the check whose parked message must go first
    status int,
    error text NOT NULL,
    answer text NOT NULL DEFAULT '',
    since timestamptz NOT NULL DEFAULT clock_timestamp());
CREATE INDEX parked_checks ON orva.parked (shop, identifier);
CREATE INDEX parked_waiting ON orva.parked (shop, waits_for) WHERE waits_for IS NOT NULL;

-- messages that came back into the line, before all that have not had their turn
CREATE TABLE orva.returned (
    lane bigint NOT NULL,
    number bigint NOT NULL,
    day date NOT NULL,
    PRIMARY KEY (lane, number));

-- a message without its content, which is large and read once
CREATE TYPE orva.head AS (day date, lane bigint, number bigint, id bigint, shop text, identifier text,
    sale text, account int, queue text, steps_done int, attempts int, step_attempts int);
-- what a worker gets of a message; the mark is what it shows again when it finishes
CREATE TYPE orva.claimed AS (position bigint, lane bigint, day date, message bigint, attempt int,
    account int, queue text, server_errors int, is_probe boolean);
CREATE TYPE orva.task AS (mark text, lane bigint, message bigint, queue text, step int,
    attempted_before boolean, is_probe boolean, credentials text, headers text, urls text,
    payload bytea);

CREATE TABLE orva.checks (
    closed_on date NOT NULL,
    shop text NOT NULL,
    identifier text NOT NULL,
    till text NOT NULL,
    number bigint NOT NULL,
    closed_at timestamptz NOT NULL,
    lane bigint NOT NULL,
    sale text NOT NULL,
    content bytea NOT NULL,
    handed_at timestamptz NOT NULL DEFAULT clock_timestamp(),
    repeated int NOT NULL DEFAULT 0,
    PRIMARY KEY (shop, identifier, closed_on)) PARTITION BY RANGE (closed_on);

CREATE SEQUENCE orva.message_ids;
CREATE TABLE orva.messages (
    day date NOT NULL,
    lane bigint NOT NULL,
    number bigint NOT NULL,
    id bigint NOT NULL,
    shop text NOT NULL,
    identifier text NOT NULL,               -- of the check
    sale text NOT NULL,                     -- of a return: the check that it returns
    account int NOT NULL,
    queue text NOT NULL,
    extra text NOT NULL,
    headers text NOT NULL,
    urls text NOT NULL,
    payload bytea NOT NULL,
    steps int NOT NULL,
    steps_done int NOT NULL,
    attempts int NOT NULL,
    step_attempts int NOT NULL,
    handed_at timestamptz NOT NULL DEFAULT clock_timestamp(),
    PRIMARY KEY (lane, day, number)) PARTITION BY RANGE (day);
CREATE INDEX messages_by_id ON orva.messages (id);

CREATE TABLE orva.attempts (
    day date NOT NULL,                      -- of the message, as in the tables below
    message bigint NOT NULL,
    attempt int NOT NULL,
    step int NOT NULL,
    worker text NOT NULL,
    at timestamptz NOT NULL DEFAULT clock_timestamp(),
    PRIMARY KEY (message, attempt, day)) PARTITION BY RANGE (day);

-- what came of an attempt that did not finish its message
CREATE TABLE orva.outcomes (
    day date NOT NULL,
    message bigint NOT NULL,
    attempt int NOT NULL,
    meaning text NOT NULL,
    status int NOT NULL,
    certainly_refused boolean NOT NULL,
    error text NOT NULL,
    at timestamptz NOT NULL DEFAULT clock_timestamp(),
    PRIMARY KEY (message, attempt, day)) PARTITION BY RANGE (day);

CREATE TABLE orva.deliveries (
    day date NOT NULL,
    message bigint NOT NULL,
    shop text NOT NULL,
    status int NOT NULL,
    by_hand boolean NOT NULL DEFAULT false,
    at timestamptz NOT NULL DEFAULT clock_timestamp(),
    PRIMARY KEY (message, day)) PARTITION BY RANGE (day);

-- for days that nobody has prepared, such as those of a clock that is wrong
CREATE TABLE orva.checks_other PARTITION OF orva.checks DEFAULT;
CREATE TABLE orva.messages_other PARTITION OF orva.messages DEFAULT;
CREATE TABLE orva.attempts_other PARTITION OF orva.attempts DEFAULT;
CREATE TABLE orva.outcomes_other PARTITION OF orva.outcomes DEFAULT;
CREATE TABLE orva.deliveries_other PARTITION OF orva.deliveries DEFAULT;
