-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- What tills share beside closed checks: what was taken back of sales, so that two tills do not take back
-- the same piece, and suspended checks that any till may take up.

-- A return is reserved before it closes at its till, and closed when it is handed over. One that was
-- closed while its till could not reach the store comes with its hand-over. One that was given back
-- stays for some time, so that a request to reserve it that was under way meanwhile comes too late.
CREATE TABLE orva.returns (
    shop text NOT NULL,
    identifier text NOT NULL,
    sale text NOT NULL,
    till text NOT NULL,
    number bigint NOT NULL,
    is_closed boolean NOT NULL,
    is_released boolean NOT NULL DEFAULT false,
    positions int[] NOT NULL,               -- of the sale's lines, as many as in the two columns below
    thousandths bigint[] NOT NULL,          -- that come back of each
    sold bigint[] NOT NULL,                 -- that the sale has of each
    content bytea NOT NULL,                 -- the return as the till keeps it
    at timestamptz NOT NULL DEFAULT clock_timestamp(),
    PRIMARY KEY (shop, identifier));
CREATE INDEX returns_of_sale ON orva.returns (shop, sale, at);
CREATE INDEX returns_reserved ON orva.returns (at) WHERE NOT is_closed AND NOT is_released;
CREATE INDEX returns_given_back ON orva.returns (at) WHERE is_released;
-- Returns that were handed over by programs that say nothing of lines, or before this version.
CREATE INDEX checks_of_sale ON orva.checks (shop, sale) WHERE sale <> '';

CREATE TABLE orva.suspended (
    shop text NOT NULL,
    identifier text NOT NULL,
    till text NOT NULL,                     -- that left it
    number bigint NOT NULL,
    left_at timestamptz NOT NULL,           -- by that till's clock
    content bytea NOT NULL,                 -- empty once it is durable at the till that has taken it
    leavings text[] NOT NULL,               -- marks of all times that it was left: a repetition is known by its own
    taken_by text,                          -- a till; null while it waits
    token text,                             -- of the take-up; whoever shows it again gets the check again
    taken_at timestamptz,
    settled_at timestamptz,
    repeated int NOT NULL DEFAULT 0,
    at timestamptz NOT NULL DEFAULT clock_timestamp(),
    PRIMARY KEY (shop, identifier));
CREATE UNIQUE INDEX suspended_taken ON orva.suspended (shop, token) WHERE token IS NOT NULL;
CREATE INDEX suspended_waiting ON orva.suspended (shop, at) WHERE taken_by IS NULL;

-- Who has taken a customer out of a closed check.
CREATE TABLE orva.erasures (
    shop text NOT NULL,
    identifier text NOT NULL,
    role text NOT NULL,
    at timestamptz NOT NULL DEFAULT clock_timestamp());

-- A check is looked for by the number that stands on the slip.
CREATE INDEX checks_by_number ON orva.checks (shop, number);
