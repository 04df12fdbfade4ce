-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- How the store stands, for people and for monitoring: numbers, and tills with their last hand-over, and
-- nothing of what checks contain. Cheap however much waits: what is counted are tables with one small row
-- for each lane with work, and what was added last to the large ones, read from their ends.

-- When each till has handed over last. A till notes it by itself, now and then and behind its commits: a row
-- that changed with each check would be one more that hand-overs wait for.
CREATE TABLE IF NOT EXISTS orva.handed_last (
    shop text NOT NULL,
    till text NOT NULL,
    at timestamptz NOT NULL,
    PRIMARY KEY (shop, till));

CREATE OR REPLACE FUNCTION orva.note_till(of_shop text, of_till text) RETURNS void
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
BEGIN
    PERFORM orva.own_shop_is(of_shop);
    INSERT INTO orva.handed_last (shop, till, at) VALUES (of_shop, of_till, clock_timestamp())
        ON CONFLICT (shop, till) DO UPDATE SET at = clock_timestamp();
END $$;

-- What was added to "attempts", "outcomes" or "deliveries" since a time, read from the end of each day's
-- table: rows are only ever added there. Of outcomes by their meaning. One kind may come in several rows.
CREATE OR REPLACE FUNCTION orva.added_since(to_table text, since timestamptz)
RETURNS TABLE (kind text, added bigint)
LANGUAGE plpgsql SET search_path = pg_catalog AS $$
DECLARE
    part regclass;
    first bigint;
    last bigint;
    pages bigint;
    earliest timestamptz;
    found record;
BEGIN
    FOR part IN SELECT inhrelid::regclass FROM pg_inherits
        WHERE inhparent = ('orva.' || quote_ident(to_table))::regclass
    LOOP
        last := pg_relation_size(part) / current_setting('block_size')::bigint;
        pages := 8;
        WHILE last > 0 LOOP
            first := greatest(last - pages, 0);
            earliest := 'infinity';
            FOR found IN EXECUTE format('SELECT %s AS kind, count(*) FILTER (WHERE at >= $1) AS added, '
                    'min(at) AS earliest FROM %s WHERE ctid >= $2 AND ctid < $3 GROUP BY 1',
                    CASE to_table WHEN 'outcomes' THEN 'meaning' ELSE '''''::text' END, part)
                USING since, format('(%s,0)', first)::tid, format('(%s,0)', last)::tid
            LOOP
                kind := found.kind;
                added := found.added;
                earliest := least(earliest, found.earliest);
                RETURN NEXT;
            END LOOP;
            -- writers beside each other fill pages beside each other, so not quite in order
            EXIT WHEN earliest < since - interval '1 minute';
            last := first;
            pages := least(pages * 2, 1024);
        END LOOP;
    END LOOP;
END $$;

-- For how long the oldest message has waited: of the first lanes in the list, which have had no turn for
-- the longest time, and of the first that wait for a time of their own.
CREATE OR REPLACE FUNCTION orva.oldest_waiting() RETURNS timestamptz
LANGUAGE sql SET search_path = pg_catalog SET enable_hashjoin = off SET enable_mergejoin = off AS $$
    SELECT min(head.handed_at) FROM (
            (SELECT lane FROM orva.ready ORDER BY position LIMIT 500)
            UNION ALL (SELECT lane FROM orva.delayed ORDER BY due_at LIMIT 500)) w
        JOIN orva.lanes l ON l.id = w.lane
        CROSS JOIN LATERAL (
            (SELECT m.handed_at FROM orva.messages m
                WHERE m.lane = l.id AND m.day >= l.head_day AND m.number > l.passed
                    AND NOT EXISTS (SELECT 1 FROM orva.parked p WHERE p.message = m.id)
                    AND NOT EXISTS (SELECT 1 FROM orva.deliveries d
                        WHERE d.message = m.id AND d.day = m.day)
                ORDER BY m.day, m.number LIMIT 1)
            UNION ALL (SELECT m.handed_at FROM orva.returned r JOIN orva.messages m
                    ON m.lane = r.lane AND m.day = r.day AND m.number = r.number
                WHERE r.lane = l.id ORDER BY r.number LIMIT 1)) head
$$;

-- Messages in the lines of lanes with work: counted up to ten thousand lanes, above that the lanes are
-- counted and their lines taken from a sample.
CREATE OR REPLACE FUNCTION orva.waiting_messages(lanes bigint, OUT messages bigint,
    OUT is_estimated boolean)
LANGUAGE plpgsql SET search_path = pg_catalog SET enable_hashjoin = off SET enable_mergejoin = off AS $$
DECLARE
    counted constant bigint := 10000;
BEGIN
    is_estimated := lanes > counted;
    IF is_estimated THEN
        SELECT round(avg(l.waiting) * lanes) INTO messages FROM (
                SELECT lane FROM orva.ready TABLESAMPLE SYSTEM (100.0 * counted / lanes)
                LIMIT counted) w
            JOIN orva.lanes l ON l.id = w.lane;
    ELSE
        SELECT sum(l.waiting) INTO messages FROM (
                SELECT lane FROM orva.ready UNION ALL SELECT lane FROM orva.delayed) w
            JOIN orva.lanes l ON l.id = w.lane;
    END IF;
    messages := coalesce(messages, lanes);
END $$;

CREATE OR REPLACE FUNCTION orva.figures(window_seconds int, OUT lanes bigint, OUT messages bigint,
    OUT is_estimated boolean, OUT oldest_seconds bigint, OUT parked bigint, OUT behind_parked bigint,
    OUT held_queues bigint, OUT paused_accounts bigint, OUT attempts bigint, OUT deliveries bigint)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    since timestamptz := clock_timestamp() - window_seconds * interval '1 second';
BEGIN
    lanes := (SELECT count(*) FROM orva.ready) + (SELECT count(*) FROM orva.delayed);
    SELECT w.messages, w.is_estimated INTO messages, is_estimated FROM orva.waiting_messages(lanes) w;
    oldest_seconds := greatest(0, coalesce(
        extract(epoch FROM clock_timestamp() - orva.oldest_waiting())::bigint, 0));
    SELECT count(*) FILTER (WHERE p.waits_for IS NULL), count(*) FILTER (WHERE p.waits_for IS NOT NULL)
        INTO parked, behind_parked FROM orva.parked p;
    held_queues := (SELECT count(*) FROM orva.holds);
    paused_accounts := (SELECT count(*) FROM orva.accounts a WHERE a.paused_status IS NOT NULL);
    attempts := (SELECT coalesce(sum(a.added), 0) FROM orva.added_since('attempts', since) a);
    deliveries := (SELECT coalesce(sum(d.added), 0) FROM orva.added_since('deliveries', since) d);
END $$;

-- What came of attempts that did not finish their message, by meaning.
CREATE OR REPLACE FUNCTION orva.failures(window_seconds int)
RETURNS TABLE (meaning text, failed bigint)
LANGUAGE sql SECURITY DEFINER SET search_path = pg_catalog AS $$
    SELECT o.kind, sum(o.added)::bigint
    FROM orva.added_since('outcomes', clock_timestamp() - window_seconds * interval '1 second') o
    WHERE o.kind NOT IN ('StepDone', 'NotSent') GROUP BY o.kind HAVING sum(o.added) > 0
$$;

-- Tills that have handed over within so many days; the others are taken for gone.
CREATE OR REPLACE FUNCTION orva.tills_heard_of(within_days int)
RETURNS TABLE (shop text, till text, at timestamptz, silent_seconds bigint)
LANGUAGE sql SECURITY DEFINER SET search_path = pg_catalog AS $$
    SELECT l.shop, l.till, l.at,
        greatest(0, extract(epoch FROM clock_timestamp() - l.at)::bigint)
    FROM orva.handed_last l WHERE l.at > clock_timestamp() - within_days * interval '1 day'
$$;

REVOKE ALL ON FUNCTION orva.note_till(text, text), orva.added_since(text, timestamptz),
    orva.oldest_waiting(), orva.waiting_messages(bigint), orva.figures(int), orva.failures(int),
    orva.tills_heard_of(int) FROM PUBLIC;
REVOKE ALL ON TABLE orva.handed_last FROM PUBLIC, orva_till, orva_worker;
GRANT EXECUTE ON FUNCTION orva.figures(int), orva.failures(int), orva.tills_heard_of(int)
    TO orva_worker;
GRANT EXECUTE ON FUNCTION orva.note_till(text, text) TO orva_till;
