-- No column says what it holds, and no key keeps ids apart.
CREATE TABLE items (rowid, uuid, type, parent_id, ordering);
CREATE TABLE apps (item_id, title, bundleid);
CREATE TABLE groups (item_id, title);
INSERT INTO items VALUES
  ('1', x'524F4F5450414745', '1', 'none', x'00'),
  (2.0, 17, 3.0, '1', 'x'),
  (3, NULL, 4, 2, '2'),
  (4, NULL, 4, ' 2 ', 1),
  (5, NULL, 'four', 2, 0),
  (6, NULL, 4, 2, 1e300);
INSERT INTO apps VALUES
  (3, 42, 'com.example.number'),
  (4, x'C3A9', x'636F6D2E6578616D706C652E62'),
  (5, 'No', 'com.example.no'),
  (6, 7.5, 'com.example.half');
