-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- What lets most messages be claimed and finished by their key alone.

-- Whether the next message may be another than the one after the last that left the line: after some were
-- parked, came back or were settled out of turn. Lanes from before are looked at closely until they are empty.
ALTER TABLE orva.lanes ADD COLUMN winding boolean NOT NULL DEFAULT true;
ALTER TABLE orva.lanes ALTER COLUMN winding SET DEFAULT false;

-- The attempt that is under way, where it is not the first; null: from before, counted when it is needed.
ALTER TABLE orva.ready ADD COLUMN attempt int;
ALTER TABLE orva.ready ALTER COLUMN attempt SET DEFAULT 0;

CREATE INDEX parked_lanes ON orva.parked (lane);

DROP FUNCTION IF EXISTS orva.claim_next_step(orva.task, text);
DROP FUNCTION IF EXISTS orva.lock_lane(text, bytea, text);
DROP FUNCTION IF EXISTS orva.require_shop(text);
