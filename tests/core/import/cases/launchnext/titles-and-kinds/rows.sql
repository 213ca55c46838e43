INSERT INTO ZPAGEENTRYDATA (ZPAGEINDEX, ZPOSITION, ZKIND, ZAPPPATH, ZFOLDERNAME, ZAPPPATHS) VALUES
  (0, 0, 'folder', NULL, NULL, CAST('["com.example.a.b"]' AS BLOB)),
  (0, 1, 'folder', NULL, '', CAST('["com.example.a.c"]' AS BLOB)),
  (0, 2, NULL, 'com.example.no.kind', NULL, NULL),
  (0, 3, 'App', 'com.example.other.kind', NULL, NULL),
  (0, 4, 'empty', 'com.example.other.kind', NULL, NULL),
  ('x', 5, 'app', 'com.example.page.zero', NULL, NULL);
