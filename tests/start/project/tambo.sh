#!/bin/sh
echo "The small workbench starts"
