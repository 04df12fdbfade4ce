-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Handing over: run with the owner's rights, so that a till needs none on the tables.

CREATE OR REPLACE FUNCTION orva.own_shop() RETURNS text
LANGUAGE plpgsql STABLE SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    RETURN (SELECT shop FROM orva.tills WHERE role = session_user);
END $$;

-- Runs inside functions that have the owner's rights. Here and below what is called returns a value, since an
-- assignment is evaluated at once, while PERFORM starts a query.
CREATE OR REPLACE FUNCTION orva.own_shop_is(given text) RETURNS boolean
LANGUAGE plpgsql AS $$
DECLARE
    own text := (SELECT shop FROM orva.tills WHERE role = session_user);
BEGIN
    IF own IS NULL AND pg_has_role(session_user, current_user, 'MEMBER') THEN
        RETURN true; -- who owns the books
    END IF;
    IF own IS DISTINCT FROM given THEN
        RAISE insufficient_privilege USING MESSAGE = 'this login is not a till of that shop';
    END IF;
    RETURN true;
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

-- The lane of a return's sale, locked until the end of the transaction, with so many messages more. Null: there
-- is none.
CREATE OR REPLACE FUNCTION orva.join_sales_lane(of_shop text, of_sale text, messages int)
RETURNS orva.lanes LANGUAGE plpgsql AS $$
DECLARE
    joined orva.lanes;
    of_sales_lane bigint;
BEGIN
    SELECT lane INTO of_sales_lane FROM orva.checks
        WHERE shop = of_shop AND identifier = of_sale ORDER BY handed_at LIMIT 1;
    UPDATE orva.lanes SET waiting = waiting + messages, handed = handed + messages,
        last_day = greatest(last_day, current_date)
        WHERE id = of_sales_lane RETURNING * INTO joined;
    RETURN joined;
END $$;

-- A check that was not here before, with its only message, or with none where there is no queue. One that was
-- violates a key, and the transaction with it. All in one function and without a look whether the check is
-- there: both are what most of a hand-over would cost. The lane's row is locked first, by counting in it.
CREATE OR REPLACE FUNCTION orva.hand_over_new(
    of_shop text, with_identifier text, of_till text, with_number bigint, closed_millis bigint,
    with_lane bytea, with_sale text, with_content bytea,
    of_queue text, with_extra text, with_headers text, with_urls text, with_payload bytea,
    with_credentials text, with_steps int, with_steps_done int, with_attempts int,
    with_step_attempts int)
RETURNS bigint LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    allowed boolean := orva.own_shop_is(of_shop);
    messages int := CASE WHEN of_queue IS NULL THEN 0 ELSE 1 END;
    closing timestamptz := to_timestamp(closed_millis / 1000.0);
    joined orva.lanes;
    by_account int;
BEGIN
    IF with_sale <> '' THEN
        joined := orva.join_sales_lane(of_shop, with_sale, messages);
    END IF;
    IF joined.id IS NULL THEN
        INSERT INTO orva.lanes AS known (shop, name, waiting, handed, last_day, head_day)
            VALUES (of_shop, with_lane, messages, messages, current_date, current_date)
            ON CONFLICT (shop, name) WHERE name IS NOT NULL DO UPDATE
                SET waiting = known.waiting + messages, handed = known.handed + messages,
                    last_day = greatest(known.last_day, current_date)
            RETURNING * INTO joined;
    END IF;
    INSERT INTO orva.checks (closed_on, shop, identifier, till, number, closed_at, lane, sale, content)
        VALUES ((closing AT TIME ZONE 'UTC')::date, of_shop, with_identifier, of_till, with_number,
            closing, joined.id, with_sale, with_content);
    IF messages = 0 THEN
        RETURN joined.id;
    END IF;
    by_account := orva.account_of(of_shop, of_queue, with_credentials);
    INSERT INTO orva.messages (day, lane, number, id, shop, identifier, sale, account, queue, extra,
            headers, urls, payload, steps, steps_done, attempts, step_attempts)
        VALUES (joined.last_day, joined.id, joined.handed, nextval('orva.message_ids'), of_shop,
            with_identifier, with_sale, by_account, of_queue, with_extra, with_headers, with_urls,
            with_payload, with_steps, with_steps_done, with_attempts, with_step_attempts);
    IF joined.waiting = 1 THEN
        INSERT INTO orva.ready (lane, account, queue) VALUES (joined.id, by_account, of_queue);
    END IF;
    IF with_sale <> '' THEN
        PERFORM orva.await_return_before(of_shop, with_identifier, joined.id);
    END IF;
    RETURN joined.id;
END $$;

-- The same for one that may have been here before, with all its messages: then nothing is added, and null
-- returned. A repetition writes too: without that its commit would wait for no standby, and what an earlier,
-- interrupted one has left might be on this server alone.
CREATE OR REPLACE FUNCTION orva.hand_over(
    of_shop text, with_identifier text, of_till text, with_number bigint, closed_millis bigint,
    with_lane bytea, with_sale text, with_content bytea,
    of_queue text, with_extra text, with_headers text, with_urls text, with_payload bytea,
    with_credentials text, with_steps int, with_steps_done int, with_attempts int,
    with_step_attempts int)
RETURNS bigint LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    RETURN orva.hand_over_new(of_shop, with_identifier, of_till, with_number, closed_millis, with_lane,
        with_sale, with_content, of_queue, with_extra, with_headers, with_urls, with_payload,
        with_credentials, with_steps, with_steps_done, with_attempts, with_step_attempts);
EXCEPTION WHEN unique_violation THEN
    UPDATE orva.checks SET repeated = repeated + 1
        WHERE shop = of_shop AND identifier = with_identifier
            AND closed_on = (to_timestamp(closed_millis / 1000.0) AT TIME ZONE 'UTC')::date;
    IF NOT FOUND THEN
        RAISE; -- it is another key
    END IF;
    RETURN NULL;
END $$;

-- Keeps a check whose messages follow. Returns the lane for them; null when the check was here before.
CREATE OR REPLACE FUNCTION orva.hand_over_check(
    of_shop text, with_identifier text, of_till text, with_number bigint, closed_millis bigint,
    with_lane bytea, with_sale text, with_content bytea)
RETURNS bigint LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    RETURN orva.hand_over(of_shop, with_identifier, of_till, with_number, closed_millis, with_lane,
        with_sale, with_content, NULL, NULL, NULL, NULL, NULL, NULL, 0, 0, 0, 0);
END $$;

-- Adds a message to the end of a lane.
CREATE OR REPLACE FUNCTION orva.add_message(
    to_lane bigint, of_shop text, of_check text, of_sale text, of_queue text, with_extra text,
    with_headers text, with_urls text, with_payload bytea, with_credentials text,
    with_steps int, with_steps_done int, with_attempts int, with_step_attempts int)
RETURNS void LANGUAGE plpgsql AS $$
DECLARE
    joined orva.lanes;
    by_account int := orva.account_of(of_shop, of_queue, with_credentials);
BEGIN
    UPDATE orva.lanes SET waiting = waiting + 1, handed = handed + 1,
        last_day = greatest(last_day, current_date)
        WHERE id = to_lane RETURNING * INTO joined;
    INSERT INTO orva.messages (day, lane, number, id, shop, identifier, sale, account, queue, extra,
            headers, urls, payload, steps, steps_done, attempts, step_attempts)
        VALUES (joined.last_day, joined.id, joined.handed, nextval('orva.message_ids'), of_shop,
            of_check, of_sale, by_account, of_queue, with_extra, with_headers, with_urls,
            with_payload, with_steps, with_steps_done, with_attempts, with_step_attempts);
    IF joined.waiting = 1 THEN
        INSERT INTO orva.ready (lane, account, queue) VALUES (joined.id, by_account, of_queue);
    END IF;
END $$;

-- A further message of the check that was handed over in the same transaction.
CREATE OR REPLACE FUNCTION orva.hand_over_more(
    of_shop text, with_identifier text, with_sale text, of_queue text, with_extra text,
    with_headers text, with_urls text, with_payload bytea, with_credentials text, with_steps int,
    with_steps_done int, with_attempts int, with_step_attempts int)
RETURNS void LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    allowed boolean := orva.own_shop_is(of_shop);
    to_lane bigint;
BEGIN
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
    IF with_sale <> '' THEN
        PERFORM orva.await_return_before(of_shop, with_identifier, to_lane);
    END IF;
END $$;

-- Keeps a check that was closed without a message, and makes no lane for it. Safe to repeat; a repetition
-- writes for the same reason as above. What waits for a return goes on: nothing of this one goes to the server.
CREATE OR REPLACE FUNCTION orva.hand_over_silent(
    of_shop text, with_identifier text, of_till text, with_number bigint, closed_millis bigint,
    with_sale text, with_content bytea)
RETURNS void LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    allowed boolean := orva.own_shop_is(of_shop);
    closing timestamptz := to_timestamp(closed_millis / 1000.0);
BEGIN
    INSERT INTO orva.checks AS known (closed_on, shop, identifier, till, number, closed_at, lane, sale,
            content)
        VALUES ((closing AT TIME ZONE 'UTC')::date, of_shop, with_identifier, of_till, with_number,
            closing, 0, with_sale, with_content)
        ON CONFLICT (shop, identifier, closed_on) DO UPDATE SET repeated = known.repeated + 1;
    IF with_sale <> '' THEN
        PERFORM orva.end_awaiting(of_shop, with_identifier);
    END IF;
    PERFORM orva.note_till(of_shop, of_till);
END $$;
