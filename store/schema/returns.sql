-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Returns at any till. Whoever takes goods of a sale back, or hands such a return over, locks the sale
-- first, and looks at what was taken back only then.

CREATE OR REPLACE FUNCTION orva.lock_sale(of_shop text, of_sale text) RETURNS void
LANGUAGE plpgsql AS $$
BEGIN
    PERFORM pg_advisory_xact_lock(4, hashtext(of_shop || ' ' || of_sale));
END $$;

-- What the store knows of the returns of a sale: those that are reserved or were handed over with their
-- lines, and those that are kept as checks only.
CREATE OR REPLACE FUNCTION orva.returns_of(of_shop text, of_sale text)
RETURNS TABLE (identifier text, till text, number bigint, closed_millis bigint, content bytea,
    at timestamptz)
LANGUAGE plpgsql AS $$
BEGIN
    RETURN QUERY SELECT r.identifier, r.till, r.number,
            (extract(epoch FROM r.at) * 1000)::bigint, r.content, r.at
        FROM orva.returns r
        WHERE r.shop = of_shop AND r.sale = of_sale AND NOT r.is_released
        UNION ALL
        SELECT c.identifier, c.till, c.number,
            (extract(epoch FROM c.closed_at) * 1000)::bigint, c.content, c.handed_at
        FROM orva.checks c
        WHERE c.shop = of_shop AND c.sale = of_sale AND c.sale <> ''
            AND NOT EXISTS (SELECT 1 FROM orva.returns r WHERE r.shop = of_shop
                AND r.identifier = c.identifier AND NOT r.is_released);
END $$;

-- Whether the loyalty server has all messages of a check.
CREATE OR REPLACE FUNCTION orva.has_all_messages(of_shop text, of_check text, in_lane bigint,
    since timestamptz)
RETURNS boolean LANGUAGE plpgsql AS $$
BEGIN
    RETURN NOT EXISTS (SELECT 1 FROM orva.messages m
        WHERE m.lane = in_lane AND m.day >= since::date - 1 AND m.shop = of_shop
            AND m.identifier = of_check
            AND NOT EXISTS (SELECT 1 FROM orva.deliveries d
                WHERE d.message = m.id AND d.day = m.day));
END $$;

-- The sales that an identifier, or the number on a slip, may mean.
CREATE OR REPLACE FUNCTION orva.sales_named(of_shop text, which text)
RETURNS TABLE (identifier text, till text, number bigint, closed_millis bigint, delivered boolean,
    content bytea)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    as_number bigint := CASE WHEN which ~ '^[0-9]{1,18}$' THEN which::bigint END;
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    RETURN QUERY SELECT DISTINCT ON (c.identifier) c.identifier, c.till, c.number,
            (extract(epoch FROM c.closed_at) * 1000)::bigint,
            orva.has_all_messages(of_shop, c.identifier, c.lane, c.handed_at), c.content
        FROM (SELECT * FROM orva.checks k
                WHERE k.shop = of_shop AND k.identifier = which AND k.sale = ''
            UNION ALL
            SELECT * FROM orva.checks k
                WHERE k.shop = of_shop AND k.number = as_number AND k.sale = '') c
        ORDER BY c.identifier, c.handed_at LIMIT 20;
END $$;

CREATE OR REPLACE FUNCTION orva.returns_known(of_shop text, of_sale text)
RETURNS TABLE (identifier text, till text, number bigint, closed_millis bigint, content bytea)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    RETURN QUERY SELECT k.identifier, k.till, k.number, k.closed_millis, k.content
        FROM orva.returns_of(of_shop, of_sale) k ORDER BY k.at, k.identifier;
END $$;

-- Another return with which more would come back of the sale than it has; the sale is locked.
CREATE OR REPLACE FUNCTION orva.return_in_the_way(of_shop text, of_sale text, with_identifier text,
    of_positions int[], with_thousandths bigint[], of_sold bigint[])
RETURNS text LANGUAGE plpgsql AS $$
BEGIN
    RETURN (
        WITH taken AS (
            SELECT r.identifier, r.at, l.position, l.thousandths
            FROM orva.returns r,
                unnest(r.positions, r.thousandths) AS l (position, thousandths)
            WHERE r.shop = of_shop AND r.sale = of_sale AND NOT r.is_released
                AND r.identifier <> with_identifier),
        too_much AS (
            SELECT w.position FROM unnest(of_positions, with_thousandths, of_sold)
                AS w (position, thousandths, sold)
            WHERE w.thousandths > w.sold - coalesce((SELECT sum(t.thousandths) FROM taken t
                WHERE t.position = w.position), 0))
        SELECT t.identifier FROM taken t JOIN too_much USING (position)
            ORDER BY t.at DESC, t.identifier LIMIT 1);
END $$;

-- Keeps what a return takes until it is handed over or given back. The outcome is 'kept', or 'unknown'
-- with a return of the sale that cannot be reckoned with, 'too much' with one that leaves too little, or
-- 'given back' when this one is.
CREATE OR REPLACE FUNCTION orva.reserve_return(of_shop text, of_till text, with_identifier text,
    with_number bigint, of_sale text, of_positions int[], with_thousandths bigint[],
    of_sold bigint[], known_returns text[], with_content bytea,
    OUT outcome text, OUT other text, OUT other_till text, OUT other_number bigint)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    own orva.returns;
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    PERFORM orva.lock_sale(of_shop, of_sale);
    -- written, so that the commit of a repetition waits for the standby as the first one should have
    UPDATE orva.returns SET number = with_number
        WHERE shop = of_shop AND identifier = with_identifier RETURNING * INTO own;
    IF FOUND THEN
        outcome := CASE WHEN own.is_released THEN 'given back' ELSE 'kept' END;
        RETURN;
    END IF;
    SELECT k.identifier, k.till, k.number INTO other, other_till, other_number
        FROM orva.returns_of(of_shop, of_sale) k
        WHERE k.identifier <> ALL (known_returns) AND k.identifier <> with_identifier
        ORDER BY k.at, k.identifier LIMIT 1;
    IF NOT FOUND THEN
        -- nor with one that is given back yet, perhaps: what is reckoned behind it would be wrong by a kopeck
        SELECT r.identifier, r.till, r.number INTO other, other_till, other_number
            FROM orva.returns r
            WHERE r.shop = of_shop AND r.sale = of_sale AND NOT r.is_closed AND NOT r.is_released
            ORDER BY r.at LIMIT 1;
    END IF;
    IF FOUND THEN
        outcome := 'unknown';
        RETURN;
    END IF;
    other := orva.return_in_the_way(of_shop, of_sale, with_identifier, of_positions,
        with_thousandths, of_sold);
    IF other IS NOT NULL THEN
        outcome := 'too much';
        SELECT r.till, r.number INTO other_till, other_number FROM orva.returns r
            WHERE r.shop = of_shop AND r.identifier = other;
        RETURN;
    END IF;
    INSERT INTO orva.returns (shop, identifier, sale, till, number, is_closed, positions, thousandths,
            sold, content, reckoned_behind)
        VALUES (of_shop, with_identifier, of_sale, of_till, with_number, false, of_positions,
            with_thousandths, of_sold, with_content, known_returns);
    outcome := 'kept';
END $$;

-- The loyalty server reckons returns of a sale one behind the other, to the kopeck, and so a return goes to it behind
-- those that were reserved before it, whichever till hands over first. Here is the nearest of these that
-- is not in the line: not handed over yet, or waiting itself; with is_delivered, that is not delivered yet.
CREATE OR REPLACE FUNCTION orva.return_before(of_shop text, with_identifier text, is_delivered boolean)
RETURNS text
LANGUAGE plpgsql AS $$
BEGIN
    RETURN (SELECT r.identifier FROM orva.returns own
        JOIN orva.returns r ON r.shop = own.shop AND r.sale = own.sale AND r.at < own.at
        WHERE own.shop = of_shop AND own.identifier = with_identifier AND NOT r.is_released
            AND (NOT EXISTS (SELECT 1 FROM orva.checks c
                    WHERE c.shop = r.shop AND c.identifier = r.identifier)
                OR EXISTS (SELECT 1 FROM orva.parked p WHERE p.shop = r.shop
                    AND p.identifier = r.identifier AND p.waits_for IS NOT NULL)
                OR is_delivered AND EXISTS (SELECT 1 FROM orva.checks c
                    WHERE c.shop = r.shop AND c.identifier = r.identifier
                        AND NOT orva.is_delivered(c.shop, c.identifier, c.lane)))
        ORDER BY r.at DESC LIMIT 1);
END $$;

-- A return that others waited for is not coming: each of them waits for the next one, or no longer.
CREATE OR REPLACE FUNCTION orva.end_awaiting(of_shop text, with_identifier text) RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
    waiter orva.parked;
    before text;
BEGIN
    FOR waiter IN SELECT * FROM orva.parked WHERE shop = of_shop AND waits_for = with_identifier
        ORDER BY number
    LOOP
        before := orva.return_before(of_shop, waiter.identifier, true); -- it goes before the line
        IF before IS NULL THEN
            PERFORM orva.return_to_line(waiter);
        ELSE
            UPDATE orva.parked SET waits_for = before WHERE message = waiter.message;
        END IF;
    END LOOP;
END $$;

-- What has waited for an hour goes all the same: the other till may have delivered its return by itself. A
-- lane that somebody works on is left to the next time.
CREATE OR REPLACE FUNCTION orva.end_long_awaiting() RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
    waiter orva.parked;
BEGIN
    FOR waiter IN SELECT p.* FROM orva.parked p JOIN orva.lanes l ON l.id = p.lane
        WHERE p.waits_for IS NOT NULL AND p.since < clock_timestamp() - interval '1 hour'
            AND NOT EXISTS (SELECT 1 FROM orva.parked other
                WHERE other.shop = p.shop AND other.identifier = p.waits_for)
        ORDER BY p.number LIMIT 100 FOR UPDATE OF l SKIP LOCKED
    LOOP
        PERFORM orva.return_to_line(waiter);
    END LOOP;
END $$;

-- A return that is being handed over waits beside its lane's line for the one before it. Its sale is locked, and
-- so is its lane.
CREATE OR REPLACE FUNCTION orva.await_return_before(of_shop text, with_identifier text, in_lane bigint)
RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
    before text := orva.return_before(of_shop, with_identifier, false);
    has_messages boolean := false;
    of_message orva.messages;
    of_lane orva.lanes;
BEGIN
    FOR of_message IN SELECT m.* FROM orva.messages m JOIN orva.lanes l ON l.id = m.lane
        WHERE m.lane = in_lane AND m.day = l.last_day AND m.number > l.handed - 100
            AND m.shop = of_shop AND m.identifier = with_identifier
    LOOP
        has_messages := true;
        CONTINUE WHEN before IS NULL
            OR EXISTS (SELECT 1 FROM orva.parked p WHERE p.message = of_message.id);
        UPDATE orva.lanes SET waiting = waiting - 1, winding = true WHERE id = in_lane
            RETURNING * INTO of_lane;
        INSERT INTO orva.parked (message, day, lane, number, shop, identifier, waits_for, error)
            VALUES (of_message.id, of_message.day, in_lane, of_message.number, of_shop,
                with_identifier, before, '');
        IF of_lane.waiting = 0 THEN
            DELETE FROM orva.ready WHERE lane = in_lane;
            DELETE FROM orva.delayed WHERE lane = in_lane;
        END IF;
    END LOOP;
    IF NOT has_messages THEN
        PERFORM orva.end_awaiting(of_shop, with_identifier);
    END IF;
    PERFORM orva.end_long_awaiting();
END $$;

-- Gives back what a return has reserved that will not close. One that was never reserved is marked too:
-- the request to reserve it may still be on its way.
CREATE OR REPLACE FUNCTION orva.release_return(of_shop text, with_identifier text) RETURNS void
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    of_sale text;
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    SELECT r.sale INTO of_sale FROM orva.returns r
        WHERE r.shop = of_shop AND r.identifier = with_identifier;
    IF FOUND THEN
        PERFORM orva.lock_sale(of_shop, of_sale);
    END IF;
    INSERT INTO orva.returns AS kept (shop, identifier, sale, till, number, is_closed, is_released,
            positions, thousandths, sold, content)
        VALUES (of_shop, with_identifier, '', '', 0, false, true, '{}', '{}', '{}', '')
        ON CONFLICT (shop, identifier) DO UPDATE SET is_released = NOT kept.is_closed,
            at = CASE WHEN kept.is_closed THEN kept.at ELSE clock_timestamp() END;
    PERFORM orva.end_awaiting(of_shop, with_identifier);
    DELETE FROM orva.returns WHERE (shop, identifier) IN (SELECT r.shop, r.identifier
        FROM orva.returns r WHERE r.is_released AND r.at < clock_timestamp() - interval '7 days'
        LIMIT 100);
END $$;

-- A return is closed at its till, and what it has reserved is taken for good: one without a message, or
-- whose till has delivered it itself, is never handed over.
CREATE OR REPLACE FUNCTION orva.close_return(of_shop text, with_identifier text) RETURNS void
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    UPDATE orva.returns SET is_closed = true
        WHERE shop = of_shop AND identifier = with_identifier AND NOT is_released;
END $$;

-- When a return that was closed without the store counts as reserved: now, but before those that its till has
-- reserved since and reckoned behind it.
CREATE OR REPLACE FUNCTION orva.place_of_return(of_shop text, of_sale text, with_identifier text)
RETURNS timestamptz LANGUAGE plpgsql AS $$
BEGIN
    RETURN least(clock_timestamp(), (SELECT min(r.at) - interval '1 microsecond'
        FROM orva.returns r WHERE r.shop = of_shop AND r.sale = of_sale AND NOT r.is_released
            AND with_identifier = ANY (r.reckoned_behind)));
END $$;

-- What a return that is being handed over takes is taken for good. Gives the return that leaves too
-- little when it was not reserved and more would come back than was sold: then it may not be kept.
CREATE OR REPLACE FUNCTION orva.settle_return(of_shop text, of_till text, with_identifier text,
    with_number bigint, of_sale text, of_positions int[], with_thousandths bigint[],
    of_sold bigint[], with_content bytea,
    OUT other text, OUT other_till text, OUT other_number bigint)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    PERFORM orva.lock_sale(of_shop, of_sale);
    UPDATE orva.returns SET is_closed = true, content = with_content
        WHERE shop = of_shop AND identifier = with_identifier AND NOT is_released;
    IF FOUND THEN
        RETURN;
    END IF;
    IF NOT EXISTS (SELECT 1 FROM orva.checks
            WHERE shop = of_shop AND identifier = with_identifier) THEN
        other := orva.return_in_the_way(of_shop, of_sale, with_identifier, of_positions,
            with_thousandths, of_sold);
    END IF;
    IF other IS NOT NULL THEN
        SELECT r.till, r.number INTO other_till, other_number FROM orva.returns r
            WHERE r.shop = of_shop AND r.identifier = other;
        RETURN;
    END IF;
    INSERT INTO orva.returns (shop, identifier, sale, till, number, is_closed, positions, thousandths,
            sold, content, at)
        VALUES (of_shop, with_identifier, of_sale, of_till, with_number, true, of_positions,
            with_thousandths, of_sold, with_content, orva.place_of_return(of_shop, of_sale, with_identifier))
        ON CONFLICT (shop, identifier) DO UPDATE SET sale = excluded.sale, till = excluded.till,
            number = excluded.number, is_closed = true, is_released = false,
            positions = excluded.positions, thousandths = excluded.thousandths,
            sold = excluded.sold, content = excluded.content, at = excluded.at;
END $$;

REVOKE ALL ON FUNCTION orva.close_return, orva.sales_named, orva.returns_known, orva.reserve_return,
    orva.release_return, orva.settle_return, orva.lock_sale, orva.returns_of, orva.has_all_messages,
    orva.return_in_the_way, orva.place_of_return, orva.return_before, orva.end_awaiting,
    orva.end_long_awaiting, orva.await_return_before FROM PUBLIC;
GRANT EXECUTE ON FUNCTION orva.sales_named, orva.returns_known, orva.reserve_return,
    orva.release_return, orva.close_return, orva.settle_return TO orva_till;
