-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- What people see of the messages and do to them.

CREATE OR REPLACE VIEW orva.undelivered AS
    SELECT m.*, p.message IS NOT NULL AS is_parked, p.waits_for, p.error AS parked_error,
        p.answer AS parked_answer, p.status AS parked_status
    FROM orva.messages m LEFT JOIN orva.parked p ON p.message = m.id
    WHERE NOT EXISTS (SELECT 1 FROM orva.deliveries d WHERE d.message = m.id AND d.day = m.day);

-- Ends every wait that a message may have: its lane's own, its queue's and its authorization's.
CREATE OR REPLACE FUNCTION orva.end_waits(of_message orva.messages) RETURNS void
LANGUAGE plpgsql AS $$
BEGIN
    PERFORM orva.lift_holds(of_message.queue, of_message.account);
    WITH due AS (DELETE FROM orva.delayed WHERE lane = of_message.lane
        RETURNING lane, account, queue)
    INSERT INTO orva.ready (lane, account, queue) SELECT lane, account, queue FROM due;
END $$;

CREATE OR REPLACE FUNCTION orva.retry(message_id bigint) RETURNS boolean
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    of_message orva.messages;
    was_parked orva.parked;
BEGIN
    SELECT * INTO of_message FROM orva.messages WHERE id = message_id;
    PERFORM 1 FROM orva.lanes WHERE id = of_message.lane FOR NO KEY UPDATE;
    IF of_message.id IS NULL OR EXISTS (SELECT 1 FROM orva.deliveries d
            WHERE d.message = message_id AND d.day = of_message.day) THEN
        RETURN false;
    END IF;
    SELECT * INTO was_parked FROM orva.parked WHERE message = message_id;
    IF FOUND THEN
        PERFORM orva.return_to_line(was_parked);
        PERFORM orva.release(of_message.shop, of_message.identifier);
    END IF;
    PERFORM orva.end_waits(of_message);
    RETURN true;
END $$;

CREATE OR REPLACE FUNCTION orva.park(message_id bigint, why text) RETURNS boolean
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    of_message orva.messages;
    of_lane orva.lanes;
BEGIN
    SELECT * INTO of_message FROM orva.messages WHERE id = message_id;
    SELECT * INTO of_lane FROM orva.lanes WHERE id = of_message.lane FOR NO KEY UPDATE;
    IF of_message.id IS NULL OR EXISTS (SELECT 1 FROM orva.deliveries d
            WHERE d.message = message_id AND d.day = of_message.day) THEN
        RETURN false;
    END IF;
    UPDATE orva.parked SET error = why, waits_for = NULL WHERE message = message_id;
    IF FOUND THEN
        RETURN true;
    END IF;
    DELETE FROM orva.returned WHERE lane = of_message.lane AND number = of_message.number;
    UPDATE orva.lanes SET waiting = waiting - 1, winding = true WHERE id = of_lane.id
        RETURNING * INTO of_lane;
    INSERT INTO orva.parked (message, day, lane, number, shop, identifier, error)
        VALUES (message_id, of_message.day, of_message.lane, of_message.number, of_message.shop,
            of_message.identifier, why);
    IF of_lane.waiting = 0 THEN
        DELETE FROM orva.ready WHERE lane = of_lane.id;
        DELETE FROM orva.delayed WHERE lane = of_lane.id;
    END IF;
    RETURN true;
END $$;

CREATE OR REPLACE FUNCTION orva.settle(message_id bigint) RETURNS boolean
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    was_parked orva.parked;
BEGIN
    SELECT * INTO was_parked FROM orva.parked WHERE message = message_id;
    PERFORM 1 FROM orva.lanes WHERE id = was_parked.lane FOR NO KEY UPDATE;
    DELETE FROM orva.parked WHERE message = message_id AND waits_for IS NULL;
    IF NOT FOUND THEN
        RETURN false;
    END IF;
    INSERT INTO orva.deliveries (day, message, shop, status, by_hand)
        VALUES (was_parked.day, message_id, was_parked.shop, coalesce(was_parked.status, 0), true);
    PERFORM orva.release(was_parked.shop, was_parked.identifier);
    DELETE FROM orva.lanes l WHERE l.id = was_parked.lane AND l.name IS NULL AND l.waiting = 0
        AND NOT EXISTS (SELECT 1 FROM orva.parked p WHERE p.lane = l.id);
    RETURN true;
END $$;

-- Returns how many undelivered messages go out with the new value.
CREATE OR REPLACE FUNCTION orva.reauthorize(of_queue text, of_shop text, new_credentials text)
RETURNS bigint LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    UPDATE orva.accounts SET credentials = new_credentials, paused_status = NULL, paused_at = NULL,
        probe_at = NULL WHERE queue = of_queue AND (of_shop = '' OR shop = of_shop);
    RETURN (SELECT count(*) FROM orva.undelivered
        WHERE queue = of_queue AND (of_shop = '' OR shop = of_shop));
END $$;
