-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- The list of a shop's checks is read by parts, each found by its key: a day's checks are too many to be sorted
-- for each part. Checks come nearly in this order, so that adding one costs next to nothing.

CREATE INDEX checks_in_order ON orva.checks (shop, closed_on, closed_at, identifier);
