-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Handing over: run with the owner's rights, so that a till needs none on the tables.

CREATE OR REPLACE FUNCTION orva.own_shop() RETURNS text
LANGUAGE plpgsql STABLE SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    RETURN (SELECT shop FROM orva.tills WHERE role = session_user);
END $$;

CREATE OR REPLACE FUNCTION orva.require_shop(given text) RETURNS void
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    own text := orva.own_shop();
BEGIN
    IF own IS NULL AND pg_has_role(session_user, current_user, 'MEMBER') THEN
        RETURN; -- who owns the books
    END IF;
    IF own IS DISTINCT FROM given THEN
        RAISE insufficient_privilege USING MESSAGE = 'this login is not a till of that shop';
    END IF;
END $$;

-- The account of a shop's queue with these credentials. Two that are made at the same moment do no harm.
CREATE OR REPLACE FUNCTION orva.account_of(of_shop text, of_queue text, with_credentials text)
RETURNS int LANGUAGE plpgsql AS $$
DECLARE
    found int;
BEGIN
    SELECT id INTO found FROM orva.accounts
        WHERE shop = of_shop AND queue = of_queue AND credentials = with_credentials
        ORDER BY id LIMIT 1;
    IF found IS NULL THEN
        INSERT INTO orva.accounts (shop, queue, credentials)
            VALUES (of_shop, of_queue, with_credentials) RETURNING id INTO found;
    END IF;
    RETURN found;
END $$;

-- The lane that a check joins, locked until the end of the transaction.
CREATE OR REPLACE FUNCTION orva.lock_lane(of_shop text, of_name bytea, of_sale text)
RETURNS bigint LANGUAGE plpgsql AS $$
DECLARE
    found bigint;
BEGIN
    IF of_sale <> '' THEN
        SELECT lane INTO found FROM orva.checks
            WHERE shop = of_shop AND identifier = of_sale ORDER BY handed_at LIMIT 1;
        SELECT id INTO found FROM orva.lanes WHERE id = found FOR NO KEY UPDATE;
        IF found IS NOT NULL THEN
            RETURN found;
        END IF;
    END IF;
    IF of_name IS NOT NULL THEN
        SELECT id INTO found FROM orva.lanes
            WHERE shop = of_shop AND name = of_name FOR NO KEY UPDATE;
        IF found IS NOT NULL THEN
            RETURN found;
        END IF;
    END IF;
    INSERT INTO orva.lanes (shop, name, last_day, head_day)
        VALUES (of_shop, of_name, current_date, current_date)
        ON CONFLICT (shop, name) WHERE name IS NOT NULL DO UPDATE SET shop = excluded.shop
        RETURNING id INTO found;
    RETURN found;
END $$;

-- Adds a message to the end of a lane that is locked, and makes the lane ready when it had no work.
CREATE OR REPLACE FUNCTION orva.add_message(
    to_lane bigint, of_shop text, of_check text, of_sale text, of_queue text, with_extra text,
    with_headers text, with_urls text, with_payload bytea, with_credentials text,
    with_steps int, with_steps_done int, with_attempts int, with_step_attempts int)
RETURNS void LANGUAGE plpgsql AS $$
DECLARE
    into_lane orva.lanes;
    by_account int := orva.account_of(of_shop, of_queue, with_credentials);
BEGIN
    UPDATE orva.lanes SET waiting = waiting + 1, handed = handed + 1,
        last_day = greatest(last_day, current_date)
        WHERE id = to_lane RETURNING * INTO into_lane;
    INSERT INTO orva.messages (day, lane, number, id, shop, identifier, sale, account, queue, extra,
            headers, urls, payload, steps, steps_done, attempts, step_attempts)
        VALUES (into_lane.last_day, to_lane, into_lane.handed, nextval('orva.message_ids'), of_shop,
            of_check, of_sale, by_account, of_queue, with_extra, with_headers, with_urls,
            with_payload, with_steps, with_steps_done, with_attempts, with_step_attempts);
    IF into_lane.waiting = 1 THEN
        INSERT INTO orva.ready (lane, account, queue) VALUES (to_lane, by_account, of_queue);
    END IF;
END $$;

-- Keeps a check. A repetition writes too: without that its commit would wait for no standby, and what
-- an earlier, interrupted one has left might be on this server alone.
-- Returns the lane for its messages; null when the check was here before, with all its messages.
CREATE OR REPLACE FUNCTION orva.hand_over_check(
    of_shop text, with_identifier text, of_till text, with_number bigint, closed_millis bigint,
    with_lane bytea, with_sale text, with_content bytea)
RETURNS bigint LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    to_lane bigint;
    was_repeated int;
    closing timestamptz := to_timestamp(closed_millis / 1000.0);
BEGIN
    PERFORM orva.require_shop(of_shop);
    UPDATE orva.checks SET repeated = repeated + 1
        WHERE shop = of_shop AND identifier = with_identifier
            AND closed_on = (closing AT TIME ZONE 'UTC')::date;
    IF FOUND THEN
        RETURN NULL;
    END IF;
    to_lane := orva.lock_lane(of_shop, with_lane, with_sale);
    INSERT INTO orva.checks AS kept (closed_on, shop, identifier, till, number, closed_at, lane, sale,
            content)
        VALUES ((closing AT TIME ZONE 'UTC')::date, of_shop, with_identifier, of_till, with_number,
            closing, to_lane, with_sale, with_content)
        ON CONFLICT (shop, identifier, closed_on) DO UPDATE SET repeated = kept.repeated + 1
        RETURNING repeated INTO was_repeated;
    IF was_repeated > 0 THEN -- somebody has handed it over meanwhile
        DELETE FROM orva.lanes WHERE id = to_lane AND name IS NULL AND handed = 0;
        RETURN NULL;
    END IF;
    RETURN to_lane;
END $$;

-- A check with its only message, or with none where there is no queue, in one round trip.
CREATE OR REPLACE FUNCTION orva.hand_over(
    of_shop text, with_identifier text, of_till text, with_number bigint, closed_millis bigint,
    with_lane bytea, with_sale text, with_content bytea,
    of_queue text, with_extra text, with_headers text, with_urls text, with_payload bytea,
    with_credentials text, with_steps int, with_steps_done int, with_attempts int,
    with_step_attempts int)
RETURNS bigint LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    to_lane bigint := orva.hand_over_check(of_shop, with_identifier, of_till, with_number,
        closed_millis, with_lane, with_sale, with_content);
BEGIN
    IF to_lane IS NOT NULL AND of_queue IS NOT NULL THEN
        PERFORM orva.add_message(to_lane, of_shop, with_identifier, with_sale, of_queue, with_extra,
            with_headers, with_urls, with_payload, with_credentials, with_steps, with_steps_done,
            with_attempts, with_step_attempts);
    END IF;
    RETURN to_lane;
END $$;

-- A further message of the check that was handed over in the same transaction.
CREATE OR REPLACE FUNCTION orva.hand_over_more(
    of_shop text, with_identifier text, with_sale text, of_queue text, with_extra text,
    with_headers text, with_urls text, with_payload bytea, with_credentials text, with_steps int,
    with_steps_done int, with_attempts int, with_step_attempts int)
RETURNS void LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    to_lane bigint;
BEGIN
    PERFORM orva.require_shop(of_shop);
    -- now() is when the transaction began: a check that was committed before has all its messages
    SELECT lane INTO to_lane FROM orva.checks
        WHERE shop = of_shop AND identifier = with_identifier AND handed_at >= now()
        ORDER BY handed_at DESC LIMIT 1;
    IF to_lane IS NULL THEN
        RAISE insufficient_privilege USING MESSAGE = 'a check cannot be given more messages later';
    END IF;
    PERFORM orva.add_message(to_lane, of_shop, with_identifier, with_sale, of_queue, with_extra,
        with_headers, with_urls, with_payload, with_credentials, with_steps, with_steps_done,
        with_attempts, with_step_attempts);
END $$;
