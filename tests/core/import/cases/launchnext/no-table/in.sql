CREATE TABLE other (x);
