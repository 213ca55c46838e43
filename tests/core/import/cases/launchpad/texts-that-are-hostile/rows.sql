INSERT INTO items VALUES
  (1, 'ROOTPAGE', 1, 0, 0),
  (2, 'p', 3, 1, 0),
  (3, 'a', 4, 2, 0),
  (4, 'b', 4, 2, 1);
INSERT INTO apps VALUES
  (3, '../../etc/passwd', '../../../etc/passwd'),
  (4, CAST(x'41FF42' AS TEXT), 'com.example.a');
