-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- What becomes of a message after an attempt. The table of what answers mean is the host's; here stands
-- what is written down for each meaning.

-- Something got through: the server is there, the address is right, and so is the authorization.
CREATE OR REPLACE FUNCTION orva.lift_holds(of_queue text, of_account int) RETURNS void
LANGUAGE plpgsql AS $$
BEGIN
    DELETE FROM orva.holds WHERE queue = of_queue;
    UPDATE orva.accounts SET paused_status = NULL, paused_at = NULL, probe_at = NULL
        WHERE paused_status IS NOT NULL AND queue = of_queue
            AND credentials = (SELECT credentials FROM orva.accounts WHERE id = of_account);
END $$;

-- Requests that were under way together and failed are one failure, by whichever worker.
CREATE OR REPLACE FUNCTION orva.hold_queue(of_queue text, for_reason text, is_probe boolean,
    wait_millis bigint[], at_least bigint) RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
    known int;
    failed int;
    wait bigint;
BEGIN
    PERFORM pg_advisory_xact_lock(3, hashtext(of_queue));
    SELECT failures INTO known FROM orva.holds WHERE queue = of_queue;
    failed := CASE WHEN known IS NULL THEN 1 WHEN is_probe THEN least(known, 1000) + 1
        ELSE greatest(known, 1) END;
    wait := greatest(wait_millis[least(failed, array_length(wait_millis, 1))], at_least);
    INSERT INTO orva.holds (queue, reason, failures, since, until)
        VALUES (of_queue, for_reason, failed, clock_timestamp(),
            clock_timestamp() + wait * interval '1 millisecond')
        ON CONFLICT (queue) DO UPDATE SET reason = excluded.reason, failures = excluded.failures,
            since = excluded.since, until = excluded.until;
END $$;

-- Takes a delivered message out of a lane that is locked and whose messages all go in turn. Returns
-- whether it was written down.
CREATE OR REPLACE FUNCTION orva.finish_in_turn(of_task orva.claimed, of_lane orva.lanes,
    with_status int) RETURNS boolean
LANGUAGE plpgsql AS $$
DECLARE
    next_number bigint := of_lane.passed + 2;
    is_last boolean := of_lane.waiting = 1;
    of_day date := of_task.day;
    changed orva.lanes;
BEGIN
    DELETE FROM orva.ready WHERE position = of_task.position AND lane = of_lane.id
        AND CASE WHEN attempt IS NULL THEN orva.last_attempt(of_task.day, of_task.message)
            ELSE greatest(attempt, 1) END = of_task.attempt;
    IF NOT FOUND THEN
        RETURN false;
    END IF;
    INSERT INTO orva.deliveries (day, message, shop, status)
        VALUES (of_day, of_task.message, of_lane.shop, with_status);
    IF is_last AND of_lane.name IS NULL THEN
        DELETE FROM orva.lanes WHERE id = of_lane.id;
        RETURN true;
    END IF;
    UPDATE orva.lanes SET waiting = waiting - 1, passed = passed + 1, head_day = of_day
        WHERE id = of_lane.id RETURNING * INTO changed;
    IF NOT is_last THEN
        INSERT INTO orva.ready (lane, account, queue) SELECT m.lane, m.account, m.queue
            FROM orva.messages m
            WHERE m.lane = of_lane.id AND m.day = of_day AND m.number = next_number;
        IF NOT FOUND THEN
            PERFORM orva.queue_lane(changed);
        END IF;
    END IF;
    RETURN true;
END $$;

-- Writes down what came of an attempt, by the session that holds its lane. waits: how long the n-th
-- failure in a row waits; alone_after: from how many server errors on a lane waits by itself.
-- Returns whether it was written: it is not when another worker has taken the message meanwhile.
CREATE OR REPLACE FUNCTION orva.write_result(of_task orva.claimed, meaning text, with_status int,
    certainly_refused boolean, with_error text, with_answer text, retry_after bigint, is_last boolean,
    waits bigint[], probe_wait bigint, alone_after int) RETURNS boolean
LANGUAGE plpgsql AS $$
DECLARE
    of_lane orva.lanes;
    head orva.head;
BEGIN
    SELECT * INTO of_lane FROM orva.lanes WHERE id = of_task.lane FOR NO KEY UPDATE;
    IF meaning = 'StepDone' AND is_last AND NOT of_task.is_probe AND NOT of_lane.winding THEN
        RETURN orva.finish_in_turn(of_task, of_lane, with_status);
    END IF;
    head := orva.head_of(of_lane); -- read after the lock, not beside it
    IF head.id IS DISTINCT FROM of_task.message
            OR orva.last_attempt(of_task.day, of_task.message) <> of_task.attempt
            OR EXISTS (SELECT 1 FROM orva.outcomes o WHERE o.message = of_task.message
                AND o.attempt = of_task.attempt AND o.day = of_task.day) THEN
        RETURN false;
    END IF;
    IF meaning = 'StepDone' AND is_last THEN
        INSERT INTO orva.deliveries (day, message, shop, status)
            VALUES (head.day, head.id, head.shop, with_status);
    ELSE
        INSERT INTO orva.outcomes (day, message, attempt, meaning, status, certainly_refused, error)
            VALUES (head.day, head.id, of_task.attempt, meaning, with_status, certainly_refused,
                with_error);
    END IF;
    IF of_task.is_probe AND meaning IN ('StepDone', 'Duplicate', 'Refused') THEN
        PERFORM orva.lift_holds(of_task.queue, of_task.account);
    END IF;
    IF meaning = 'StepDone' AND is_last THEN
        DELETE FROM orva.ready WHERE position = of_task.position;
        PERFORM orva.queue_lane(orva.leave_line(head));
        PERFORM orva.release(head.shop, head.identifier);
    ELSIF meaning IN ('Duplicate', 'Refused') THEN
        DELETE FROM orva.ready WHERE position = of_task.position;
        INSERT INTO orva.parked (message, day, lane, number, shop, identifier, status, error, answer)
            VALUES (head.id, head.day, head.lane, head.number, head.shop, head.identifier,
                with_status, with_error, with_answer);
        PERFORM orva.queue_lane(orva.leave_line(head));
    ELSIF meaning = 'WrongAuthorization' THEN
        UPDATE orva.accounts SET paused_status = with_status, paused_at = clock_timestamp(),
            probe_at = clock_timestamp() + probe_wait * interval '1 millisecond'
            WHERE queue = of_task.queue AND credentials =
                (SELECT credentials FROM orva.accounts WHERE id = of_task.account);
    ELSIF meaning = 'WrongAddress' THEN
        PERFORM orva.hold_queue(of_task.queue, 'address', of_task.is_probe, ARRAY[probe_wait], 0);
    ELSIF meaning = 'ServerError' AND of_task.server_errors + 1 >= alone_after THEN
        DELETE FROM orva.ready WHERE position = of_task.position;
        INSERT INTO orva.delayed (lane, account, queue, due_at) VALUES (head.lane, head.account,
            head.queue, clock_timestamp() + interval '1 millisecond' * greatest(retry_after,
                waits[least(of_task.server_errors + 2 - alone_after, array_length(waits, 1))]));
    ELSIF meaning IN ('ServerAway', 'ServerError') THEN
        PERFORM orva.hold_queue(of_task.queue, 'server', of_task.is_probe, waits, retry_after);
    END IF;
    RETURN true;
END $$;

CREATE OR REPLACE FUNCTION orva.finish(of_task orva.claimed, meaning text, with_status int,
    certainly_refused boolean, with_error text, with_answer text, retry_after bigint, is_last boolean,
    waits bigint[], probe_wait bigint, alone_after int) RETURNS boolean
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    RETURN orva.write_result(of_task, meaning, with_status, certainly_refused, with_error, with_answer,
        retry_after, is_last, waits, probe_wait, alone_after);
END $$;

-- Finishing and the next claim, in one commit.
CREATE OR REPLACE FUNCTION orva.finish_and_claim(of_task orva.claimed, meaning text, with_status int,
    certainly_refused boolean, with_error text, with_answer text, retry_after bigint, is_last boolean,
    waits bigint[], probe_wait bigint, alone_after int, from_position bigint, by_worker text,
    OUT written boolean, OUT task orva.task, OUT next bigint)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    found record;
BEGIN
    written := orva.write_result(of_task, meaning, with_status, certainly_refused, with_error, with_answer,
        retry_after, is_last, waits, probe_wait, alone_after);
    IF written AND meaning = 'StepDone' AND NOT is_last THEN
        task := orva.claim_next_step(of_task, by_worker);
        next := from_position;
        RETURN;
    END IF;
    found := orva.find_task(from_position, by_worker);
    task := found.task;
    next := found.next;
END $$;

-- Lanes whose own wait is over are ready again. Returns how many.
CREATE OR REPLACE FUNCTION orva.wake_delayed() RETURNS bigint
LANGUAGE sql SECURITY DEFINER SET search_path = pg_catalog AS $$
    WITH due AS (DELETE FROM orva.delayed WHERE due_at <= clock_timestamp()
            RETURNING lane, account, queue),
        woken AS (INSERT INTO orva.ready (lane, account, queue)
            SELECT lane, account, queue FROM due RETURNING 1)
    SELECT count(*) FROM woken
$$;
