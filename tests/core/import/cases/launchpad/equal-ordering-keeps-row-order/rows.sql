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
