CREATE TABLE items (rowid INTEGER PRIMARY KEY, uuid TEXT, type INTEGER, parent_id INTEGER, ordering INTEGER);
CREATE TABLE apps (item_id INTEGER PRIMARY KEY, title TEXT, bundleid TEXT);
CREATE TABLE groups (item_id INTEGER PRIMARY KEY, title TEXT);
INSERT INTO items VALUES
  (1, 'HOLDINGPAGE', 1, 0, 0),
  (2, 'HOLDINGPAGE_DB', 1, 0, 0),
  (3, 'ROOTPAGE_DB', 1, 0, 0),
  (4, 'ROOTPAGE', 3, 0, 0);
