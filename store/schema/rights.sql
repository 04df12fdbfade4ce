-- SPDX-FileCopyrightText: 2026 The Orva developers
-- SPDX-License-Identifier: Apache-2.0
--
-- Who may do what. A till adds what is its shop's and reads it back; it changes nothing and sees no other
-- shop's. A worker claims and finishes; it reads no check.

DO $$
BEGIN
    IF NOT EXISTS (SELECT 1 FROM pg_roles WHERE rolname = 'orva_till') THEN
        CREATE ROLE orva_till NOLOGIN;
    END IF;
    IF NOT EXISTS (SELECT 1 FROM pg_roles WHERE rolname = 'orva_worker') THEN
        CREATE ROLE orva_worker NOLOGIN;
    END IF;
END $$;

REVOKE ALL ON ALL FUNCTIONS IN SCHEMA orva FROM PUBLIC;
REVOKE ALL ON ALL TABLES IN SCHEMA orva FROM PUBLIC, orva_till, orva_worker;
GRANT USAGE ON SCHEMA orva TO orva_till, orva_worker;
GRANT SELECT ON orva.versions TO orva_till, orva_worker;

GRANT EXECUTE ON FUNCTION orva.own_shop() TO orva_till;
GRANT EXECUTE ON FUNCTION orva.hand_over TO orva_till;
GRANT EXECUTE ON FUNCTION orva.hand_over_new TO orva_till;
GRANT EXECUTE ON FUNCTION orva.hand_over_check TO orva_till;
GRANT EXECUTE ON FUNCTION orva.hand_over_more TO orva_till;
GRANT EXECUTE ON FUNCTION orva.hand_over_silent TO orva_till;
GRANT SELECT ON orva.checks, orva.messages, orva.deliveries, orva.parked TO orva_till;

GRANT EXECUTE ON FUNCTION orva.claim TO orva_worker;
GRANT EXECUTE ON FUNCTION orva.finish_and_claim TO orva_worker;
GRANT EXECUTE ON FUNCTION orva.finish TO orva_worker;
GRANT EXECUTE ON FUNCTION orva.wake_delayed TO orva_worker;
GRANT EXECUTE ON FUNCTION orva.prepare_days TO orva_worker;
GRANT EXECUTE ON FUNCTION orva.drop_days TO orva_worker;

ALTER TABLE orva.checks ENABLE ROW LEVEL SECURITY;
ALTER TABLE orva.messages ENABLE ROW LEVEL SECURITY;
ALTER TABLE orva.deliveries ENABLE ROW LEVEL SECURITY;
ALTER TABLE orva.parked ENABLE ROW LEVEL SECURITY;
DROP POLICY IF EXISTS own_shop ON orva.checks;
CREATE POLICY own_shop ON orva.checks FOR SELECT TO orva_till USING (shop = orva.own_shop());
DROP POLICY IF EXISTS own_shop ON orva.messages;
CREATE POLICY own_shop ON orva.messages FOR SELECT TO orva_till USING (shop = orva.own_shop());
DROP POLICY IF EXISTS own_shop ON orva.deliveries;
CREATE POLICY own_shop ON orva.deliveries FOR SELECT TO orva_till USING (shop = orva.own_shop());
DROP POLICY IF EXISTS own_shop ON orva.parked;
CREATE POLICY own_shop ON orva.parked FOR SELECT TO orva_till USING (shop = orva.own_shop());
