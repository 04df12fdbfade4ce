-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0

-- What a file of version 3 has beyond one of version 1, with checks in it. The clock was put back
-- behind the second one. Never changed: tills have such files.

CREATE TABLE checks (id TEXT PRIMARY KEY, number INTEGER, state TEXT NOT NULL CHECK (state = 'open' OR state = 'suspended' OR state = 'closed' OR state = 'abandoned'), type INTEGER, sale_id TEXT, data BLOB, message_id INTEGER REFERENCES queue_messages(id) ON DELETE SET NULL, updated_at INTEGER);
CREATE INDEX checks_sale ON checks(sale_id) WHERE sale_id IS NOT NULL;
CREATE INDEX checks_message ON checks(message_id) WHERE message_id IS NOT NULL;
CREATE TABLE settings (key TEXT PRIMARY KEY, value) WITHOUT ROWID;
CREATE INDEX checks_recent ON checks(state, type, updated_at);
INSERT INTO checks VALUES ('first', 1, 'closed', 1, NULL, X'01', 5, 1772452800000);
INSERT INTO checks VALUES ('second', 2, 'closed', 1, NULL, X'02', NULL, 1772460000000);
INSERT INTO checks VALUES ('third', 3, 'suspended', 1, NULL, X'03', NULL, 1772456400000);
INSERT INTO checks VALUES ('fourth', 4, 'open', 1, NULL, NULL, NULL, 1772456400000);
INSERT INTO settings VALUES ('nextCheckNumber', 5);
PRAGMA user_version = 3;
