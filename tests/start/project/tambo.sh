#!/bin/sh
echo "Called with: $*"
echo "The small workbench starts"
