-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- A lane stands in the list once, and is found there without reading all of it.

CREATE UNIQUE INDEX ready_lanes ON orva.ready (lane);
