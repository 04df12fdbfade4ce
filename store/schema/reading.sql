-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- What tills read of closed checks, and the one thing that they may change in them.

-- Whether the loyalty server has all messages of a check.
CREATE OR REPLACE FUNCTION orva.is_delivered(of_shop text, with_identifier text, on_lane bigint)
RETURNS boolean LANGUAGE sql STABLE AS $$
    SELECT NOT EXISTS (
        SELECT 1 FROM orva.messages m
        WHERE m.lane = on_lane AND m.shop = of_shop AND m.identifier = with_identifier
            AND NOT EXISTS (SELECT 1 FROM orva.deliveries d
                WHERE d.message = m.id AND d.day = m.day))
$$;

-- Gives a check another content and empties its messages, once all of them are delivered: a customer is
-- taken out of it. Nothing else of it changes, and who has done it stays known.
-- Returns "rewritten", "waiting" where something is to be delivered yet, or "none".
CREATE OR REPLACE FUNCTION orva.rewrite_check(of_shop text, with_identifier text, with_content bytea)
RETURNS text LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    kept record;
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    SELECT c.closed_on, c.lane INTO kept FROM orva.checks c
        WHERE c.shop = of_shop AND c.identifier = with_identifier
        ORDER BY c.handed_at LIMIT 1 FOR UPDATE;
    IF NOT FOUND THEN
        RETURN 'none';
    END IF;
    IF NOT orva.is_delivered(of_shop, with_identifier, kept.lane) THEN
        RETURN 'waiting';
    END IF;
    UPDATE orva.checks SET content = with_content
        WHERE shop = of_shop AND identifier = with_identifier AND closed_on = kept.closed_on;
    UPDATE orva.returns SET content = with_content
        WHERE shop = of_shop AND identifier = with_identifier;
    UPDATE orva.messages SET payload = '', extra = ''
        WHERE lane = kept.lane AND shop = of_shop AND identifier = with_identifier;
    INSERT INTO orva.erasures (shop, identifier, role)
        VALUES (of_shop, with_identifier, session_user);
    RETURN 'rewritten';
END $$;

REVOKE ALL ON FUNCTION orva.is_delivered, orva.rewrite_check FROM PUBLIC;
GRANT EXECUTE ON FUNCTION orva.is_delivered, orva.rewrite_check TO orva_till;
