-- No column says what it holds, and no key keeps ids apart.
CREATE TABLE items (rowid, uuid, type, parent_id, ordering);
CREATE TABLE apps (item_id, title, bundleid);
CREATE TABLE groups (item_id, title);
INSERT INTO items VALUES
  (1, 'ROOTPAGE', 1, 0, 0),
  (2, 'p', 3, 1, 0),
  (5, 'f', 2, 2, 0),
  (5, 'its page, with its own id', 3, 5, 0),
  (5, 'f in itself', 2, 5, 0),
  (6, 'a', 4, 5, 1),
  (5, 'f again', 2, 2, 1);
INSERT INTO apps VALUES
  (6, 'A', 'com.example.a');
INSERT INTO groups VALUES
  (5, 'F');
