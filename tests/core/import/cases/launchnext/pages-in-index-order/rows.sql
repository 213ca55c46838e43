INSERT INTO ZPAGEENTRYDATA (ZPAGEINDEX, ZPOSITION, ZKIND, ZAPPPATH, ZFOLDERNAME, ZAPPPATHS) VALUES
  (7, 0, 'app', '/Applications/Maps.app', NULL, NULL),
  (0, 2, 'app', 'com.example.by.id', NULL, NULL),
  (0, 1, 'app', '/Applications/Mail.app', 'not a name', NULL),
  (-1, 0, 'app', ' file:///Applications/My%20Notes.app/ ', NULL, NULL),
  (3, 0, 'app', '/Applications/Nobody Knows.app', NULL, NULL),
  (3, 1, 'app', NULL, NULL, NULL);
