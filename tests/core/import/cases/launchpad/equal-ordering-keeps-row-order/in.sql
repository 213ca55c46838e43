CREATE TABLE items (rowid INTEGER PRIMARY KEY, uuid TEXT, type INTEGER, parent_id INTEGER, ordering INTEGER);
CREATE TABLE apps (item_id INTEGER PRIMARY KEY, title TEXT, bundleid TEXT);
CREATE TABLE groups (item_id INTEGER PRIMARY KEY, title TEXT);
INSERT INTO items VALUES
  (1, 'ROOTPAGE', 1, 0, 0),
  (2, 'p', 3, 1, 0),
  (3, 'c', 4, 2, 5),
  (4, 'a', 4, 2, 5),
  (5, 'first', 4, 2, -1),
  (6, 'b', 4, 2, 5);
INSERT INTO apps VALUES
  (3, 'C', 'com.example.c'),
  (4, 'A', 'com.example.a'),
  (5, 'First', 'com.example.first'),
  (6, 'B', 'com.example.b');
