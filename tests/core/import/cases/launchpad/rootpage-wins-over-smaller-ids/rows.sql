INSERT INTO items VALUES
  (3, 'A', 1, 0, 0),
  (7, 'ROOTPAGE', 1, 0, 0),
  (8, 'p', 3, 7, 0),
  (9, 'p', 3, 3, 0),
  (10, 'a', 4, 8, 0),
  (11, 'b', 4, 9, 0);
INSERT INTO apps VALUES
  (10, 'Seven', 'com.example.seven'),
  (11, 'Three', 'com.example.three');
