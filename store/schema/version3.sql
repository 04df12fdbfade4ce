-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0

COMMENT ON SCHEMA orva IS 'The books that the tills of a shop share';
