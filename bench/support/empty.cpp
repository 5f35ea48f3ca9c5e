// Keeps the bench support library non-empty before any helper exists.
