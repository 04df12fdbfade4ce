-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Claiming and finishing. A worker has a lane as long as its session holds the lane's advisory lock; no
-- transaction is open while it waits for the loyalty server.

-- Writes an attempt down and gives all that is needed to send it.
CREATE OR REPLACE FUNCTION orva.begin_attempt(at_position bigint, head orva.head, by_worker text,
    probes boolean) RETURNS orva.task
LANGUAGE plpgsql AS $$
DECLARE
    task orva.task;
    mark orva.claimed;
    progress record;
BEGIN
    SELECT * INTO progress FROM orva.progress_of(head);
    mark.position := at_position;
    mark.lane := head.lane;
    mark.day := head.day;
    mark.message := head.id;
    mark.account := head.account;
    mark.queue := head.queue;
    mark.server_errors := progress.server_errors;
    mark.is_probe := probes;
    mark.attempt := orva.last_attempt(head.day, head.id) + 1;
    INSERT INTO orva.attempts (day, message, attempt, step, worker)
        VALUES (head.day, head.id, mark.attempt, progress.steps_done, by_worker);
    task.mark := mark::text;
    task.lane := head.lane;
    task.message := head.id;
    task.queue := head.queue;
    SELECT m.headers, m.urls, m.payload INTO task.headers, task.urls, task.payload
        FROM orva.messages m
        WHERE m.lane = head.lane AND m.day = head.day AND m.number = head.number;
    SELECT credentials INTO task.credentials FROM orva.accounts WHERE id = head.account;
    task.step := progress.steps_done;
    task.attempted_before := progress.step_attempts > 0;
    task.is_probe := probes;
    RETURN task;
END $$;

-- Whether a queue or an account may be sent for: 'free', 'held', or 'probe' for the one that finds out
-- whether it can go on. Who has the probe holds its lock until it is finished.
CREATE OR REPLACE FUNCTION orva.gate(of_queue text, of_account int) RETURNS text
LANGUAGE plpgsql AS $$
DECLARE
    hold timestamptz;
    pause timestamptz;
BEGIN
    SELECT until INTO hold FROM orva.holds WHERE queue = of_queue;
    SELECT probe_at INTO pause FROM orva.accounts
        WHERE id = of_account AND paused_status IS NOT NULL;
    IF hold IS NULL AND pause IS NULL THEN
        RETURN 'free';
    END IF;
    IF coalesce(hold > clock_timestamp(), false) OR coalesce(pause > clock_timestamp(), false)
            OR NOT pg_try_advisory_lock(2, hashtext(of_queue)) THEN
        RETURN 'held';
    END IF;
    RETURN 'probe';
END $$;

-- Tries to take a lane that was seen in the list; null when somebody has it or its work is done.
CREATE OR REPLACE FUNCTION orva.take(seen orva.ready, by_worker text, probes boolean)
RETURNS orva.task LANGUAGE plpgsql AS $$
DECLARE
    of_lane orva.lanes;
    head orva.head;
BEGIN
    IF NOT pg_try_advisory_lock(seen.lane) THEN
        RETURN NULL;
    END IF;
    -- what was read before the lock may be over
    PERFORM 1 FROM orva.ready WHERE position = seen.position;
    IF FOUND THEN
        SELECT * INTO of_lane FROM orva.lanes WHERE id = seen.lane;
        head := orva.head_of(of_lane);
        IF head.account <> seen.account THEN
            UPDATE orva.ready SET account = head.account WHERE position = seen.position;
        ELSIF NOT orva.set_aside(seen, head) THEN
            RETURN orva.begin_attempt(seen.position, head, by_worker, probes);
        END IF;
    END IF;
    PERFORM pg_advisory_unlock(seen.lane);
    RETURN NULL;
END $$;

-- Finds a lane with work that nobody has. The list is read from a position on, a hundred lanes at most:
-- "next" is where to go on, null at its end.
CREATE OR REPLACE FUNCTION orva.claim(from_position bigint, by_worker text, OUT task orva.task,
    OUT next bigint)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    seen orva.ready;
    held text[] := ARRAY(SELECT h.queue FROM orva.holds h WHERE h.until > clock_timestamp());
    paused int[] := '{}';
    way text;
    looked_at int := 0;
BEGIN
    FOR seen IN SELECT * FROM orva.ready r
        WHERE r.position >= from_position AND NOT r.queue = ANY (held)
        ORDER BY r.position LIMIT 100
    LOOP
        looked_at := looked_at + 1;
        next := seen.position + 1;
        CONTINUE WHEN seen.account = ANY (paused);
        way := orva.gate(seen.queue, seen.account);
        IF way = 'held' THEN
            paused := paused || seen.account;
            CONTINUE;
        END IF;
        task := orva.take(seen, by_worker, way = 'probe');
        IF task.mark IS NOT NULL THEN
            RETURN;
        END IF;
        IF way = 'probe' THEN
            PERFORM pg_advisory_unlock(2, hashtext(seen.queue));
        END IF;
    END LOOP;
    IF looked_at < 100 THEN
        next := NULL;
    END IF;
END $$;

-- The following step of a message whose lane the session holds.
CREATE OR REPLACE FUNCTION orva.claim_next_step(of_task orva.claimed, by_worker text)
RETURNS orva.task
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    of_lane orva.lanes;
    head orva.head;
BEGIN
    SELECT * INTO of_lane FROM orva.lanes WHERE id = of_task.lane;
    head := orva.head_of(of_lane);
    IF head.id = of_task.message AND pg_try_advisory_lock(of_task.lane) THEN
        RETURN orva.begin_attempt(of_task.position, head, by_worker, false);
    END IF;
    RETURN NULL;
END $$;

-- A return whose sale is parked waits beside the line, and the others pass. True: it does.
CREATE OR REPLACE FUNCTION orva.set_aside(at_ready orva.ready, head orva.head) RETURNS boolean
LANGUAGE plpgsql AS $$
BEGIN
    IF head.sale = '' OR NOT EXISTS (SELECT 1 FROM orva.parked
            WHERE shop = head.shop AND identifier = head.sale) THEN
        RETURN false;
    END IF;
    PERFORM 1 FROM orva.lanes WHERE id = head.lane FOR NO KEY UPDATE;
    DELETE FROM orva.ready WHERE position = at_ready.position;
    INSERT INTO orva.parked (message, day, lane, number, shop, identifier, waits_for, error)
        VALUES (head.id, head.day, head.lane, head.number, head.shop, head.identifier, head.sale, '');
    PERFORM orva.queue_lane(orva.leave_line(head));
    RETURN true;
END $$;

-- The following step of a message whose lane the session holds.
CREATE OR REPLACE FUNCTION orva.claim_next_step(of_task orva.task, by_worker text) RETURNS orva.task
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    head orva.head;
BEGIN
    SELECT orva.head_of(l) INTO head FROM orva.lanes l WHERE l.id = of_task.lane;
    IF head.id = of_task.message THEN
        RETURN orva.begin_attempt(of_task.position, head, by_worker, false);
    END IF;
    RETURN NULL;
END $$;
