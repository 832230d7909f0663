-- Shows that the engine answers.
return false, string.format("the file has %d bytes", @NAME@.bytes())
