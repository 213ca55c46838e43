INSERT INTO items VALUES
  (1, 'ROOTPAGE', 1, 0, 0),
  (2, 'p', 3, 1, 0),
  (3, 'f', 2, 2, 0),
  (4, 'fp', 3, 3, 0),
  (5, 'p', 3, 1, 1),
  (6, 'a', 4, 5, 0),
  (7, 'f without pages', 2, 5, 1),
  (8, 'p', 3, 1, 2),
  (9, 'f', 2, 4, 0),
  (10, 'fp', 3, 9, 0);
INSERT INTO apps VALUES
  (6, 'A', 'com.example.a');
INSERT INTO groups VALUES
  (3, 'Empty'),
  (7, 'Bare'),
  (9, 'Inner');
