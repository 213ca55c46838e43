INSERT INTO items VALUES
  (1, 'HOLDINGPAGE', 1, 0, 0),
  (2, 'HOLDINGPAGE_DB', 1, 0, 0),
  (3, 'ROOTPAGE_DB', 1, 0, 0),
  (4, 'ROOTPAGE', 3, 0, 0);
