-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- What a file of version 1 looks like, with a message in it. Never changed: tills have such files.

CREATE TABLE queue_accounts (id INTEGER PRIMARY KEY, queue TEXT NOT NULL, authorization TEXT NOT NULL, paused_status INTEGER, paused_at INTEGER, probe_at INTEGER);
CREATE TABLE queue_messages (id INTEGER PRIMARY KEY AUTOINCREMENT, queue TEXT NOT NULL, account_id INTEGER REFERENCES queue_accounts(id), extra TEXT NOT NULL, state TEXT NOT NULL CHECK (state = 'waiting' OR state = 'parked' OR state = 'delivered'), steps INTEGER NOT NULL, steps_done INTEGER NOT NULL DEFAULT 0, step_attempts INTEGER NOT NULL DEFAULT 0, attempts INTEGER NOT NULL DEFAULT 0, server_errors INTEGER NOT NULL DEFAULT 0, attempted_at INTEGER, next_attempt_at INTEGER, last_status INTEGER, last_error TEXT, last_answer TEXT, created_at INTEGER NOT NULL, delivered_at INTEGER, CHECK ((state = 'delivered') = (account_id IS NULL)));
CREATE INDEX queue_undelivered ON queue_messages(account_id, id) WHERE account_id IS NOT NULL;
CREATE TABLE queue_bodies (message_id INTEGER PRIMARY KEY REFERENCES queue_messages(id) ON DELETE CASCADE, headers TEXT NOT NULL, urls TEXT NOT NULL, payload BLOB NOT NULL);
CREATE TABLE queue_dependencies (message_id INTEGER NOT NULL REFERENCES queue_messages(id) ON DELETE CASCADE, depends_on INTEGER NOT NULL REFERENCES queue_messages(id) ON DELETE CASCADE, PRIMARY KEY (message_id, depends_on)) WITHOUT ROWID;
CREATE INDEX queue_dependents ON queue_dependencies(depends_on);
CREATE TABLE queue_holds (queue TEXT PRIMARY KEY, reason TEXT NOT NULL CHECK (reason IN ('server', 'address')), failures INTEGER NOT NULL, since INTEGER NOT NULL, until INTEGER NOT NULL) WITHOUT ROWID;
INSERT INTO queue_accounts VALUES (1, 'orva', 'Basic one', NULL, NULL, NULL);
INSERT INTO queue_messages (id, queue, account_id, extra, state, steps, created_at) VALUES (5, 'orva', 1, 'kept', 'waiting', 1, 1772452800000);
INSERT INTO queue_bodies VALUES (5, '{"Accept":"application/xml"}', '{"1":"http://server.test/step1"}', CAST('<old/>' AS BLOB));
PRAGMA user_version = 1;
