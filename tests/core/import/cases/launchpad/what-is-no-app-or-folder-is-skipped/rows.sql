INSERT INTO items VALUES
  (1, 'ROOTPAGE', 1, 0, 0),
  (2, 'p', 3, 1, 0),
  (3, 'no identifier', 4, 2, 0),
  (4, 'empty identifier', 4, 2, 1),
  (5, 'widget', 5, 2, 2),
  (6, 'page in page', 3, 2, 3),
  (7, 'in it', 4, 6, 0),
  (8, 'a', 4, 2, 4),
  (9, 'no type', NULL, 2, 5),
  (10, 'app on the root', 4, 1, 0),
  (11, 'no row in apps', 4, 2, 6),
  (12, 'root in page', 1, 2, 7);
INSERT INTO apps VALUES
  (3, 'N', NULL),
  (4, 'E', ''),
  (5, 'W', 'com.example.widget'),
  (7, 'I', 'com.example.in'),
  (8, 'A', 'com.example.a'),
  (9, 'T', 'com.example.t'),
  (10, 'R', 'com.example.r');
