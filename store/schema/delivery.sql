-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Claiming and finishing. A worker has a lane as long as its session holds the lane's advisory lock; no
-- transaction is open while it waits for the loyalty server.

-- Writes a further attempt down and gives all that is needed to send it.
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
    UPDATE orva.ready SET attempt = mark.attempt WHERE position = at_position;
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

-- The same for the first attempt of a lane's next message, found by its key. Null where that is not the
-- way: then somebody has tried before, or another message is next.
CREATE OR REPLACE FUNCTION orva.begin_first_attempt(seen orva.ready, of_lane orva.lanes,
    by_worker text, probes boolean) RETURNS orva.task
LANGUAGE plpgsql AS $$
DECLARE
    head record;
    mark orva.claimed;
    of_day date := CASE WHEN of_lane.waiting = 1 THEN of_lane.last_day ELSE of_lane.head_day END;
    next_number bigint := of_lane.passed + 1;
BEGIN
    IF of_lane.winding OR coalesce(seen.attempt, 1) > 0 THEN
        RETURN NULL;
    END IF;
    SELECT m.id, m.shop, m.sale, m.steps_done, m.step_attempts, m.headers, m.urls, m.payload,
            a.credentials INTO head
        FROM orva.messages m JOIN orva.accounts a ON a.id = m.account
        WHERE m.lane = of_lane.id AND m.day = of_day AND m.number = next_number
            AND m.account = seen.account;
    IF NOT FOUND THEN
        RETURN NULL;
    END IF;
    IF head.sale <> '' THEN
        IF EXISTS (SELECT 1 FROM orva.parked p
                WHERE p.shop = head.shop AND p.identifier = head.sale) THEN
            RETURN NULL;
        END IF;
    END IF;
    INSERT INTO orva.attempts (day, message, attempt, step, worker)
        VALUES (of_day, head.id, 1, head.steps_done, by_worker) ON CONFLICT DO NOTHING;
    IF NOT FOUND THEN
        RETURN NULL; -- whoever wrote it down is gone
    END IF;
    mark := ROW(seen.position, seen.lane, of_day, head.id, 1, seen.account, seen.queue, 0, probes);
    RETURN ROW(mark::text, seen.lane, head.id, seen.queue, head.steps_done, head.step_attempts > 0,
        probes, head.credentials, head.headers, head.urls, head.payload)::orva.task;
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
    task orva.task;
BEGIN
    IF NOT pg_try_advisory_lock(seen.lane) THEN
        RETURN NULL;
    END IF;
    -- what was read before the lock may be over
    SELECT l.* INTO of_lane FROM orva.ready r JOIN orva.lanes l ON l.id = r.lane
        WHERE r.position = seen.position;
    IF FOUND THEN
        task := orva.begin_first_attempt(seen, of_lane, by_worker, probes);
        IF task.mark IS NOT NULL THEN
            RETURN task;
        END IF;
        head := orva.head_of(of_lane);
        IF head.account <> seen.account THEN
            UPDATE orva.ready SET account = head.account, queue = head.queue
                WHERE position = seen.position;
        ELSIF NOT orva.set_aside(seen, head) THEN
            RETURN orva.begin_attempt(seen.position, head, by_worker, probes);
        END IF;
    END IF;
    PERFORM pg_advisory_unlock(seen.lane);
    RETURN NULL;
END $$;

-- Finds a lane with work that nobody has. The list is read from a position on, a hundred lanes at most:
-- "next" is where to go on, null at its end.
CREATE OR REPLACE FUNCTION orva.find_task(from_position bigint, by_worker text, OUT task orva.task,
    OUT next bigint)
LANGUAGE plpgsql AS $$
DECLARE
    seen orva.ready;
    anything_waits boolean := EXISTS (SELECT 1 FROM orva.holds) OR EXISTS (
        SELECT 1 FROM orva.accounts WHERE paused_status IS NOT NULL);
    held text[] := '{}';
    paused int[] := '{}';
    way text := 'free';
    looked_at int := 0;
BEGIN
    IF anything_waits THEN
        held := ARRAY(SELECT h.queue FROM orva.holds h WHERE h.until > clock_timestamp());
    END IF;
    FOR seen IN SELECT * FROM orva.ready r
        WHERE r.position >= from_position AND NOT r.queue = ANY (held)
        ORDER BY r.position LIMIT 100
    LOOP
        looked_at := looked_at + 1;
        next := seen.position + 1;
        CONTINUE WHEN seen.account = ANY (paused);
        IF anything_waits THEN
            way := orva.gate(seen.queue, seen.account);
        END IF;
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

CREATE OR REPLACE FUNCTION orva.claim(from_position bigint, by_worker text, OUT task orva.task,
    OUT next bigint)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    found record;
BEGIN
    found := orva.find_task(from_position, by_worker);
    task := found.task;
    next := found.next;
END $$;

-- The following step of a message whose lane the session holds.
CREATE OR REPLACE FUNCTION orva.claim_next_step(of_task orva.claimed, by_worker text)
RETURNS orva.task
LANGUAGE plpgsql SECURITY INVOKER AS $$
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
