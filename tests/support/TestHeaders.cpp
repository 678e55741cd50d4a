// Owns the precompiled headers of the tests, which need a source to belong to.
