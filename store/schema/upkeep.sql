-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Partitions by day.

-- Makes the partitions of the days to come. Attaching them locks nobody out but the table for days that
-- nobody has prepared. Returns how many were made.
CREATE OR REPLACE FUNCTION orva.prepare_days(ahead int) RETURNS int
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    made int := 0;
    day date;
    parent text;
    name text;
BEGIN
    PERFORM pg_advisory_xact_lock(1, 2);
    FOR day IN SELECT current_date + n FROM generate_series(0, ahead) n LOOP
        FOREACH parent IN ARRAY ARRAY['checks', 'messages', 'attempts', 'outcomes', 'deliveries'] LOOP
            name := parent || to_char(day, '_YYYYMMDD');
            CONTINUE WHEN to_regclass('orva.' || name) IS NOT NULL;
            BEGIN
                EXECUTE format('CREATE TABLE orva.%I (LIKE orva.%I INCLUDING ALL)', name, parent);
                EXECUTE format('ALTER TABLE orva.%I ATTACH PARTITION orva.%I '
                    'FOR VALUES FROM (%L) TO (%L)', parent, name, day, day + 1);
                made := made + 1;
            EXCEPTION WHEN check_violation THEN
                NULL; -- rows of that day came before its table: they stay where they are
            END;
        END LOOP;
    END LOOP;
    RETURN made;
END $$;

-- Whether a message belongs to the tables of a day: by its own, or by that of its check.
CREATE OR REPLACE FUNCTION orva.is_of_day(of_day date, of_message_day date, of_shop text,
    of_check text) RETURNS boolean
LANGUAGE plpgsql STABLE AS $$
BEGIN
    IF of_message_day = of_day THEN
        RETURN true;
    END IF;
    RETURN EXISTS (SELECT 1 FROM orva.checks c
        WHERE c.shop = of_shop AND c.identifier = of_check AND c.closed_on = of_day);
END $$;

-- Whether everything in the tables of a day is done: no message of that day, or of a check that was
-- closed on it, is undelivered. Looks at what is undelivered, which is parked, has come back or stands in the
-- line of a lane with work; not at the day, most of which is delivered.
CREATE OR REPLACE FUNCTION orva.is_day_done(of_day date) RETURNS boolean
LANGUAGE sql SET search_path = pg_catalog AS $$
    SELECT NOT EXISTS (
        SELECT 1 FROM orva.parked p WHERE orva.is_of_day(of_day, p.day, p.shop, p.identifier))
    AND NOT EXISTS (
        SELECT 1 FROM orva.returned r, LATERAL (
            SELECT m.* FROM orva.messages m
            WHERE m.lane = r.lane AND m.day = r.day AND m.number = r.number OFFSET 0) m
        WHERE orva.is_of_day(of_day, m.day, m.shop, m.identifier))
    AND NOT EXISTS (
        SELECT 1 FROM (SELECT lane FROM orva.ready UNION ALL SELECT lane FROM orva.delayed) w,
        LATERAL (SELECT * FROM orva.lanes l WHERE l.id = w.lane OFFSET 0) l,
        LATERAL (SELECT m.* FROM orva.messages m
            WHERE m.lane = l.id AND m.day BETWEEN l.head_day AND l.last_day AND m.number > l.passed
                AND NOT EXISTS (SELECT 1 FROM orva.deliveries d
                    WHERE d.message = m.id AND d.day = m.day OFFSET 0) OFFSET 0) m
        WHERE orva.is_of_day(of_day, m.day, m.shop, m.identifier))
$$;

-- Drops the tables of days that are older and done. Returns how many days went.
CREATE OR REPLACE FUNCTION orva.drop_days(older_than int) RETURNS int
LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog AS $$
DECLARE
    gone int := 0;
    day date;
    parent text;
BEGIN
    PERFORM pg_advisory_xact_lock(1, 2);
    FOR day IN SELECT to_date(right(c.relname, 8), 'YYYYMMDD') FROM pg_class c
            WHERE c.relnamespace = 'orva'::regnamespace AND c.relkind = 'r'
                AND c.relname ~ '^messages_[0-9]{8}$'
                AND to_date(right(c.relname, 8), 'YYYYMMDD') < current_date - older_than
            ORDER BY 1
    LOOP
        -- nothing is added to it from here on, so what is seen to be done stays done
        EXECUTE format('LOCK TABLE orva.%I IN SHARE MODE', 'messages' || to_char(day, '_YYYYMMDD'));
        CONTINUE WHEN NOT orva.is_day_done(day);
        FOREACH parent IN ARRAY ARRAY['checks', 'messages', 'attempts', 'outcomes', 'deliveries'] LOOP
            EXECUTE format('DROP TABLE IF EXISTS orva.%I', parent || to_char(day, '_YYYYMMDD'));
        END LOOP;
        gone := gone + 1;
    END LOOP;
    RETURN gone;
END $$;
