INSERT INTO items VALUES
  (1, 'ROOTPAGE', 1, 0, 0),
  (2, NULL, 3, 1, 0),
  (3, NULL, 4, 2, 0),
  (4, NULL, 4, 2, 1),
  (5, NULL, 2, 2, 2),
  (6, NULL, 3, 5, 0),
  (7, NULL, 4, 6, 0),
  (8, NULL, 2, 2, 3),
  (9, NULL, 3, 8, 0),
  (10, NULL, 4, 9, 0);
INSERT INTO apps VALUES
  (3, NULL, 'com.example.untitled'),
  (4, '', 'com.example.empty'),
  (7, 'In', 'com.example.in'),
  (10, 'Too', 'com.example.too');
INSERT INTO groups VALUES
  (5, NULL),
  (8, '');
