INSERT INTO items VALUES
  (1, 'ROOTPAGE', 1, 0, 0),
  (2, 'HOLDINGPAGE', 1, 0, 0),
  (3, 'p2', 3, 1, 2),
  (4, 'p1', 3, 1, 1),
  (5, 'a', 4, 4, 1),
  (6, 'f', 2, 4, 0),
  (7, 'fp2', 3, 6, 1),
  (8, 'fp1', 3, 6, 0),
  (9, 'b', 4, 8, 0),
  (10, 'c', 4, 7, 0),
  (11, 'd', 4, 3, 0),
  (12, 'hidden page', 3, 2, 0),
  (13, 'e', 4, 12, 0);
INSERT INTO apps VALUES
  (5, 'Mail', 'com.apple.mail'),
  (9, 'Pages', 'com.apple.iWork.Pages'),
  (10, 'Keynote', 'com.apple.iWork.Keynote'),
  (11, 'Maps', 'com.apple.Maps'),
  (13, 'Held', 'com.example.held');
INSERT INTO groups VALUES
  (6, 'Work');
