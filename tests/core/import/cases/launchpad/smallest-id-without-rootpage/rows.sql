INSERT INTO items VALUES
  (7, 'B', 1, 0, 0),
  (5, 'A', 1, 0, 0),
  (1, 'HOLDINGPAGE', 1, 0, 0),
  (2, 'ROOTPAGE_DB', 1, 0, 0),
  (3, 'x HOLDING x', 1, 0, 0),
  (8, 'p7', 3, 7, 0),
  (9, 'p5', 3, 5, 0),
  (10, 'a', 4, 8, 0),
  (11, 'b', 4, 9, 0);
INSERT INTO apps VALUES
  (10, 'Seven', 'com.example.seven'),
  (11, 'Five', 'com.example.five');
