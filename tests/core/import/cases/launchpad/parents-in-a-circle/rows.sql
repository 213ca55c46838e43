INSERT INTO items VALUES
  (1, 'ROOTPAGE', 1, 3, 0),
  (2, 'p', 3, 1, 0),
  (3, 'f', 2, 2, 0),
  (4, 'fp', 3, 3, 0),
  (5, 'a', 4, 4, 0),
  (6, 'lost folder', 2, 7, 0),
  (7, 'lost page', 3, 6, 0),
  (8, 'own parent', 2, 8, 0);
INSERT INTO apps VALUES
  (5, 'A', 'com.example.a');
INSERT INTO groups VALUES
  (3, 'F');
