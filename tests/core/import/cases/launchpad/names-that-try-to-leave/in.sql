CREATE TABLE items (rowid INTEGER PRIMARY KEY, uuid TEXT, type INTEGER, parent_id INTEGER, ordering INTEGER);
CREATE TABLE apps (item_id INTEGER PRIMARY KEY, title TEXT, bundleid TEXT);
CREATE TABLE groups (item_id INTEGER PRIMARY KEY, title TEXT);
INSERT INTO items VALUES
  (1, 'ROOTPAGE', 1, 0, 0),
  (2, 'p', 3, 1, 0),
  (3, 'a', 4, 2, 0);
INSERT INTO apps VALUES
  (3, '../../etc/passwd', '../../../etc/passwd');
