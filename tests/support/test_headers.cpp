// Empty: a target needs a source to precompile headers.
