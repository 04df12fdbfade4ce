-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Handing over is one function for what is new, which is nearly everything, and one for what may be repeated.
-- The functions that these replace (join_lane, leave_lane, keep_check, keep_message) stay where they were made:
-- hand-overs that are under way call them.

COMMENT ON COLUMN orva.checks.repeated IS 'how often the check was handed over again';
