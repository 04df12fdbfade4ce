-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Where a lane and a message stand, and how messages leave their lane's line and come back into it.

-- The message that is next in a lane: those that came back go first. A message that somebody has parked
-- or settled out of its turn may be found where the line reaches it, and is passed over. Mostly the next
-- one is of the same day, and only that day's table is read. OFFSET 0: what is done is looked up by its key;
-- as a join, planned while the tables are small, it would read a whole day.
CREATE OR REPLACE FUNCTION orva.head_of(of_lane orva.lanes) RETURNS orva.head
LANGUAGE plpgsql AS $$
DECLARE
    head orva.head;
BEGIN
    SELECT m.day, m.lane, m.number, m.id, m.shop, m.identifier, m.sale, m.account, m.queue,
            m.steps_done, m.attempts, m.step_attempts INTO head
        FROM orva.returned r
        JOIN orva.messages m ON m.lane = r.lane AND m.day = r.day AND m.number = r.number
        WHERE r.lane = of_lane.id ORDER BY r.number LIMIT 1;
    IF FOUND THEN
        RETURN head;
    END IF;
    SELECT m.day, m.lane, m.number, m.id, m.shop, m.identifier, m.sale, m.account, m.queue,
            m.steps_done, m.attempts, m.step_attempts INTO head
        FROM orva.messages m
        WHERE m.lane = of_lane.id AND m.day = of_lane.head_day AND m.number > of_lane.passed
            AND NOT EXISTS (SELECT 1 FROM orva.parked p WHERE p.message = m.id OFFSET 0)
            AND NOT EXISTS (SELECT 1 FROM orva.deliveries d
                WHERE d.message = m.id AND d.day = of_lane.head_day OFFSET 0)
        ORDER BY m.number LIMIT 1;
    IF NOT FOUND AND of_lane.last_day > of_lane.head_day THEN
        SELECT m.day, m.lane, m.number, m.id, m.shop, m.identifier, m.sale, m.account, m.queue,
                m.steps_done, m.attempts, m.step_attempts INTO head
            FROM orva.messages m
            WHERE m.lane = of_lane.id AND m.day > of_lane.head_day AND m.number > of_lane.passed
                AND NOT EXISTS (SELECT 1 FROM orva.parked p WHERE p.message = m.id OFFSET 0)
                AND NOT EXISTS (SELECT 1 FROM orva.deliveries d
                    WHERE d.message = m.id AND d.day = m.day OFFSET 0)
            ORDER BY m.day, m.number LIMIT 1;
    END IF;
    RETURN head;
END $$;

-- The number of the attempt that was written down last, 0 before the first one.
CREATE OR REPLACE FUNCTION orva.last_attempt(on_day date, of_message bigint) RETURNS int
LANGUAGE plpgsql AS $$
DECLARE
    last int;
BEGIN
    SELECT a.attempt INTO last FROM orva.attempts a
        WHERE a.message = of_message AND a.day = on_day ORDER BY a.attempt DESC LIMIT 1;
    RETURN coalesce(last, 0);
END $$;

-- How far a message has come: counted from what was written down about it.
CREATE OR REPLACE FUNCTION orva.progress_of(of_message orva.head, OUT steps_done int,
    OUT attempts int, OUT step_attempts int, OUT server_errors int)
LANGUAGE plpgsql AS $$
DECLARE
    counted_from int;    -- earlier ones say nothing about whether the server has it
    errors_from int;
BEGIN
    steps_done := of_message.steps_done;
    attempts := of_message.attempts;
    step_attempts := of_message.step_attempts;
    server_errors := 0;
    IF orva.last_attempt(of_message.day, of_message.id) = 0 THEN
        RETURN;
    END IF;
    SELECT of_message.steps_done + count(*) FILTER (WHERE o.meaning = 'StepDone'),
            of_message.attempts + count(*) FILTER (WHERE o.meaning IS DISTINCT FROM 'NotSent'),
            coalesce(max(a.attempt) FILTER (WHERE o.meaning IN ('StepDone', 'Duplicate')), 0),
            coalesce(max(a.attempt) FILTER (WHERE o.meaning = 'StepDone'), 0)
        INTO steps_done, attempts, counted_from, errors_from
        FROM orva.attempts a LEFT JOIN orva.outcomes o
            ON o.message = of_message.id AND o.day = of_message.day AND o.attempt = a.attempt
        WHERE a.day = of_message.day AND a.message = of_message.id;
    SELECT count(*) FILTER (WHERE a.attempt > counted_from
                AND NOT coalesce(o.certainly_refused, false)),
            count(*) FILTER (WHERE a.attempt > errors_from AND o.meaning = 'ServerError')
        INTO step_attempts, server_errors
        FROM orva.attempts a LEFT JOIN orva.outcomes o
            ON o.message = of_message.id AND o.day = of_message.day AND o.attempt = a.attempt
        WHERE a.day = of_message.day AND a.message = of_message.id;
    IF counted_from = 0 THEN
        step_attempts := step_attempts + of_message.step_attempts;
    END IF;
END $$;

-- Takes a message out of its lane's line. The lane's row is locked from here on.
CREATE OR REPLACE FUNCTION orva.leave_line(of_message orva.head) RETURNS orva.lanes
LANGUAGE plpgsql AS $$
DECLARE
    changed orva.lanes;
BEGIN
    -- the line's own order goes on only where the message was next in it
    UPDATE orva.lanes SET waiting = waiting - 1, passed = greatest(passed, of_message.number),
        head_day = greatest(head_day, of_message.day),
        winding = winding OR EXISTS (SELECT 1 FROM orva.parked p WHERE p.message = of_message.id)
        WHERE id = of_message.lane RETURNING * INTO changed;
    DELETE FROM orva.returned WHERE lane = of_message.lane AND number = of_message.number;
    IF changed.waiting = 0 THEN -- all that ever came is done or parked
        UPDATE orva.lanes SET passed = handed, head_day = last_day,
            winding = EXISTS (SELECT 1 FROM orva.parked p WHERE p.lane = changed.id)
            WHERE id = changed.id RETURNING * INTO changed;
    END IF;
    RETURN changed;
END $$;

-- Puts a lane with work at the end of the list, and one without out of it.
CREATE OR REPLACE FUNCTION orva.queue_lane(of_lane orva.lanes) RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
    head orva.head;
BEGIN
    IF of_lane.waiting > 0 THEN
        head := orva.head_of(of_lane);
        INSERT INTO orva.ready (lane, account, queue) VALUES (of_lane.id, head.account, head.queue);
    ELSIF of_lane.name IS NULL THEN
        DELETE FROM orva.lanes l WHERE l.id = of_lane.id
            AND NOT EXISTS (SELECT 1 FROM orva.parked p WHERE p.lane = l.id);
    END IF;
END $$;

-- What waited for a check that is done goes back into its line.
CREATE OR REPLACE FUNCTION orva.release(of_shop text, of_check text) RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
    waiter orva.parked;
BEGIN
    IF EXISTS (SELECT 1 FROM orva.parked WHERE shop = of_shop AND identifier = of_check) THEN
        RETURN;
    END IF;
    FOR waiter IN SELECT * FROM orva.parked WHERE shop = of_shop AND waits_for = of_check
        ORDER BY number
    LOOP
        PERFORM orva.return_to_line(waiter);
    END LOOP;
END $$;

-- Puts a message that was left out before all others of its lane.
CREATE OR REPLACE FUNCTION orva.return_to_line(what orva.parked) RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
    of_lane orva.lanes;
BEGIN
    UPDATE orva.lanes SET waiting = waiting + 1, winding = true WHERE id = what.lane
        RETURNING * INTO of_lane;
    DELETE FROM orva.parked WHERE message = what.message;
    IF what.number <= of_lane.passed THEN -- otherwise the line comes to it by itself
        INSERT INTO orva.returned (lane, number, day) VALUES (what.lane, what.number, what.day);
    END IF;
    IF of_lane.waiting = 1 THEN
        PERFORM orva.queue_lane(of_lane);
    END IF;
END $$;
