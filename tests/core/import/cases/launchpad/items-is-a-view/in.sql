CREATE TABLE apps (item_id, title, bundleid);
CREATE TABLE groups (item_id, title);
CREATE VIEW items AS
  WITH RECURSIVE endless(rowid) AS (SELECT 1 UNION ALL SELECT rowid + 1 FROM endless)
  SELECT rowid, 'ROOTPAGE' AS uuid, 1 AS type, 0 AS parent_id, 0 AS ordering FROM endless;
