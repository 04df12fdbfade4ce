-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Checks without a message are kept too, so that a return finds them at any till.

COMMENT ON COLUMN orva.checks.lane IS 'of its messages; 0: it was closed without one';

-- What tills write is text and compresses well. The usual method takes a tenth of a hand-over's time and more for
-- it, this one next to none; a server that was built without it keeps the usual one.
DO $$
DECLARE
    large record;
BEGIN
    FOR large IN SELECT a.attrelid::regclass AS part, a.attname
        FROM pg_attribute a JOIN pg_class c ON c.oid = a.attrelid
        WHERE c.relnamespace = 'orva'::regnamespace AND c.relkind IN ('r', 'p')
            AND (c.relname ~ '^(checks|returns|suspended)(_|$)' AND a.attname = 'content'
                OR c.relname ~ '^messages(_|$)' AND a.attname = 'payload')
    LOOP
        EXECUTE format('ALTER TABLE %s ALTER COLUMN %I SET COMPRESSION lz4', large.part, large.attname);
    END LOOP;
EXCEPTION WHEN feature_not_supported THEN
    NULL;
END $$;
