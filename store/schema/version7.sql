-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- A till may know a return of its own that the store has not heard of yet, and reckon the next one behind it.

ALTER TABLE orva.returns ADD COLUMN reckoned_behind text[] NOT NULL DEFAULT '{}';
