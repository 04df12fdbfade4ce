-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Checks without a message are kept too, so that a return finds them at any till.

COMMENT ON COLUMN orva.checks.lane IS 'of its messages; 0: it was closed without one';
