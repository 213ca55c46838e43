INSERT INTO items VALUES
  (1, 'ROOTPAGE', 1, 0, 0),
  (2, 'p', 3, 1, 0),
  (3, 'f', 2, 2, 0),
  (4, 'fp', 3, 3, 0),
  (5, 'ff', 2, 4, 1),
  (6, 'ffp', 3, 5, 0),
  (7, 'a', 4, 4, 0),
  (8, 'b', 4, 6, 0),
  (9, 'c', 4, 4, 2);
INSERT INTO apps VALUES
  (7, 'A', 'com.example.a'),
  (8, 'B', 'com.example.b'),
  (9, 'C', 'com.example.c');
INSERT INTO groups VALUES
  (3, 'Outer'),
  (5, 'Inner');
