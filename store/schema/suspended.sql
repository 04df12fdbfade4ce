-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Suspended checks that any till of the shop may take up. A row stays after its check has gone: a till that
-- repeats what it was not answered must be told what became of it, not be believed anew.

-- Leaves a check. Ends as "left", "closed" where a till has closed it, or "elsewhere" where another has it.
CREATE OR REPLACE FUNCTION orva.leave_suspended(
    of_shop text, with_identifier text, by_till text, with_number bigint, left_millis bigint,
    with_content bytea, with_mark text, OUT ended text, OUT at_till text)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    kept orva.suspended;
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    ended := 'left';
    -- a repetition writes too, so that its commit waits for the standby as the first one should have
    INSERT INTO orva.suspended AS s (shop, identifier, till, number, left_at, content, leavings)
        VALUES (of_shop, with_identifier, by_till, with_number, to_timestamp(left_millis / 1000.0),
            with_content, ARRAY[with_mark])
        ON CONFLICT (shop, identifier) DO UPDATE SET repeated = s.repeated + 1
        RETURNING * INTO kept;
    IF kept.repeated > 0 AND with_mark = ANY (kept.leavings) THEN
        RETURN;
    END IF;
    SELECT c.till INTO at_till FROM orva.checks c
        WHERE c.shop = of_shop AND c.identifier = with_identifier LIMIT 1;
    IF FOUND THEN
        ended := 'closed';
        DELETE FROM orva.suspended WHERE shop = of_shop AND identifier = with_identifier
            AND kept.repeated = 0;
        RETURN;
    END IF;
    IF kept.repeated = 0 THEN
        RETURN;
    END IF;
    IF coalesce(kept.taken_by, kept.till) <> by_till THEN
        ended := 'elsewhere';
        at_till := coalesce(kept.taken_by, kept.till);
        RETURN;
    END IF;
    -- who has taken it up leaves it again
    UPDATE orva.suspended SET till = by_till, number = with_number,
        left_at = to_timestamp(left_millis / 1000.0), content = with_content,
        leavings = leavings || with_mark, taken_by = NULL, token = NULL, taken_at = NULL,
        settled_at = NULL, at = clock_timestamp()
        WHERE shop = of_shop AND identifier = with_identifier;
END $$;

-- Takes a check up. Ends as "taken", "none", "elsewhere", or "settled" where this take-up is over.
CREATE OR REPLACE FUNCTION orva.take_up_suspended(
    of_shop text, which text, by_till text, with_token text, OUT ended text, OUT at_till text,
    OUT with_identifier text, OUT with_number bigint, OUT left_millis bigint, OUT with_content bytea)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    kept orva.suspended;
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    PERFORM pg_advisory_xact_lock(4, hashtext(with_token)); -- its first call may be under way still
    UPDATE orva.suspended SET repeated = repeated + 1 WHERE shop = of_shop AND token = with_token
        RETURNING * INTO kept;
    IF NOT FOUND THEN
        IF which = 'last' THEN
            SELECT * INTO kept FROM orva.suspended WHERE shop = of_shop AND taken_by IS NULL
                ORDER BY at DESC LIMIT 1 FOR UPDATE SKIP LOCKED;
        ELSE
            SELECT * INTO kept FROM orva.suspended WHERE shop = of_shop AND identifier = which
                FOR UPDATE;
        END IF;
        IF kept.identifier IS NULL OR kept.taken_by IS NOT NULL THEN
            ended := CASE WHEN kept.identifier IS NULL THEN 'none' ELSE 'elsewhere' END;
            at_till := kept.taken_by;
            RETURN;
        END IF;
        UPDATE orva.suspended SET taken_by = by_till, token = with_token,
            taken_at = clock_timestamp()
            WHERE shop = of_shop AND identifier = kept.identifier;
    END IF;
    ended := CASE WHEN kept.settled_at IS NULL THEN 'taken' ELSE 'settled' END;
    at_till := kept.till;
    with_identifier := kept.identifier;
    with_number := kept.number;
    left_millis := floor(extract(epoch FROM kept.left_at) * 1000);
    with_content := kept.content;
END $$;

-- Forgets the content of a check that is durable at the till that has taken it. Returns false when nobody
-- has it by this take-up: it was released.
CREATE OR REPLACE FUNCTION orva.settle_suspended(of_shop text, with_token text) RETURNS boolean
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    UPDATE orva.suspended SET content = '', repeated = repeated + 1,
        settled_at = coalesce(settled_at, clock_timestamp())
        WHERE shop = of_shop AND token = with_token;
    RETURN FOUND;
END $$;

-- Makes a check free again that a till has asked for and has not got. Returns false when there is none
-- whose content is here.
CREATE OR REPLACE FUNCTION orva.release_suspended(with_identifier text) RETURNS boolean
LANGUAGE plpgsql AS $$
BEGIN
    UPDATE orva.suspended SET taken_by = NULL, token = NULL, taken_at = NULL
        WHERE identifier = with_identifier AND taken_by IS NOT NULL AND settled_at IS NULL;
    RETURN FOUND;
END $$;

REVOKE ALL ON FUNCTION orva.leave_suspended, orva.take_up_suspended, orva.settle_suspended,
    orva.release_suspended FROM PUBLIC;
GRANT EXECUTE ON FUNCTION orva.leave_suspended, orva.take_up_suspended, orva.settle_suspended
    TO orva_till;
GRANT SELECT ON orva.suspended TO orva_till;
ALTER TABLE orva.suspended ENABLE ROW LEVEL SECURITY;
DROP POLICY IF EXISTS own_shop ON orva.suspended;
CREATE POLICY own_shop ON orva.suspended FOR SELECT TO orva_till USING (shop = orva.own_shop());
