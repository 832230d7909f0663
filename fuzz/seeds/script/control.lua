-- a
error("must run")
