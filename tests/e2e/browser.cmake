# Browsers end to end (added below).
