error("")
