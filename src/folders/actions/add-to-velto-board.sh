#!/bin/sh
# Adds the folders selected in Files to the Velto board; a running Velto takes them over.
exec @VELTO_EXECUTABLE@ "$@"
